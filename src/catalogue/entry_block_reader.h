// Reads the entry block of a catalogue while it is decompressed. Nothing in it is trusted: every
// count is held against the bytes that are left.
#ifndef SEALKEEPER_CATALOGUE_ENTRY_BLOCK_READER_H
#define SEALKEEPER_CATALOGUE_ENTRY_BLOCK_READER_H

#include <cstdint>
#include <span>

#include "app/result_code.h"
#include "catalogue/stored_entry.h"

namespace sealkeeper {

// Reads `entryCount` records from the compressed form of an entry block into `entries`. What the
// block holds past the last record is not decompressed. Fails with `FileInvalid` when the block
// cannot be decompressed, whether any record is asked for or not, or a record is not whole;
// `entries` is then empty. No memory is asked for before the block is known to have room for so
// many records.
ResultCode ReadEntryBlock(std::span<const std::uint8_t> compressed, std::uint32_t entryCount,
                          EntryList& entries);

}  // namespace sealkeeper

#endif
