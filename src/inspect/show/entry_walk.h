// The entries of a catalogue one after the other. However many there are, it takes the memory of
// one.
#ifndef SEALKEEPER_INSPECT_SHOW_ENTRY_WALK_H
#define SEALKEEPER_INSPECT_SHOW_ENTRY_WALK_H

#include <cstdint>
#include <optional>

#include "catalogue/catalogue_reader.h"
#include "catalogue/entry_record_reader.h"
#include "inspect/show/stored_path.h"
#include "runtime/invalid_reason.h"
#include "runtime/sha256.h"

namespace sealkeeper {

struct WalkedEntry {
    RecordStart record;
    StoredPath path;
};

class EntryWalk {
  public:
    // Begins with the first entry of `file`, which must outlive the walk, as `reason` must, where
    // it is not null. Nothing when the entry block is not sound; what is wrong, here and in what
    // follows, is then in `*reason`.
    [[nodiscard]] static std::optional<EntryWalk> Begin(const CatalogueFile& file,
                                                        InvalidReason* reason = nullptr);

    // Goes on to the next entry. False when there is none left or it is not whole.
    [[nodiscard]] bool Next(WalkedEntry& entry);

    // Gives the next digest of the current entry. False when it has no more.
    [[nodiscard]] bool NextDigest(Sha256Digest& digest);

    // Whether all entries were walked over, and how many bytes of the block follow them then.
    [[nodiscard]] bool HasEnded() const { return entriesLeft_ == 0; }
    [[nodiscard]] std::uint64_t BytesLeft() const { return records_.BytesLeft(); }

  private:
    EntryWalk(EntryRecordReader records, std::uint32_t entryCount);

    void SkipDigests();

    EntryRecordReader records_;
    std::uint32_t entriesLeft_;
    std::uint32_t digestsLeft_ = 0;
};

}  // namespace sealkeeper

#endif
