// Iterates over the entries of a catalogue. Holds one entry at a time, however many there are.
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
    // Begins at the first entry of `file`. `file` and `reason`, which may be null, must outlive the
    // walk. Empty if the entry block is not sound. `*reason` says what is wrong, also with later
    // entries.
    [[nodiscard]] static std::optional<EntryWalk> Begin(const CatalogueFile& file,
                                                        InvalidReason* reason = nullptr);

    // Moves to the next entry. False if there is none, or if it is incomplete.
    [[nodiscard]] bool Next(WalkedEntry& entry);

    // Reads the next digest of the current entry. False if it has no more.
    [[nodiscard]] bool NextDigest(Sha256Digest& digest);

    // Whether all entries were read. `BytesLeft` is then the number of bytes after the last one.
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
