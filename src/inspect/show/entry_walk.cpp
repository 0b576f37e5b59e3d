#include "inspect/show/entry_walk.h"

#include <utility>

namespace sealkeeper {

std::optional<EntryWalk> EntryWalk::Begin(const CatalogueFile& file, InvalidReason* reason) {
    auto records = EntryRecordReader::Open(CompressedBlockOf(file), file.header.entryCount, reason);
    if (!records) {
        return std::nullopt;
    }
    return EntryWalk(std::move(*records), file.header.entryCount);
}

EntryWalk::EntryWalk(EntryRecordReader records, std::uint32_t entryCount)
    : records_(std::move(records)), entriesLeft_(entryCount) {}

bool EntryWalk::Next(WalkedEntry& entry) {
    SkipDigests();
    if (entriesLeft_ == 0 || !records_.ReadStart(entry.record)) {
        return false;
    }
    --entriesLeft_;
    digestsLeft_ = entry.record.DigestCount();
    entry.path = ReadStoredPath(entry.record.PathField());
    return true;
}

bool EntryWalk::NextDigest(Sha256Digest& digest) {
    // The count was checked against the bytes left when the record was read.
    if (digestsLeft_ == 0 || !records_.ReadDigests(digest)) {
        return false;
    }
    --digestsLeft_;
    return true;
}

void EntryWalk::SkipDigests() {
    Sha256Digest digest;
    while (NextDigest(digest)) {
    }
}

}  // namespace sealkeeper
