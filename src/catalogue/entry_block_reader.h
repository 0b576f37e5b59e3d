// Reads the entry block of a catalogue while decompressing it. Nothing in it is trusted: every
// count is checked against the bytes that are left.
#ifndef SEALKEEPER_CATALOGUE_ENTRY_BLOCK_READER_H
#define SEALKEEPER_CATALOGUE_ENTRY_BLOCK_READER_H

#include <cstdint>
#include <span>

#include "app/result_code.h"
#include "catalogue/stored_entry.h"

namespace sealkeeper {

// Reads `entryCount` records from a compressed entry block into `entries`. Bytes past the last
// record are not decompressed. Fails with `FileInvalid` when the block cannot be decompressed, even
// if `entryCount` is 0, or when a record is incomplete; then `entries` is empty. Allocates no
// memory for entries before the block is known to be long enough for them.
ResultCode ReadEntryBlock(std::span<const std::uint8_t> compressed, std::uint32_t entryCount,
                          EntryList& entries);

}  // namespace sealkeeper

#endif
