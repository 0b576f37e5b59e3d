// A catalogue file round an entry block, for fuzzers that look at the block alone.
#ifndef SEALKEEPER_FUZZ_ENTRY_BLOCK_FILE_H
#define SEALKEEPER_FUZZ_ENTRY_BLOCK_FILE_H

#include "fuzzer.h"

namespace sealkeeper::fuzz {

// `input` is an entry count of four bytes and, uncompressed, the entry block. Nothing is wrong with
// the catalogue otherwise. Empty when there is no byte of a block. Each byte gets a code of its
// own: a search for longer strings would take most of the time and say nothing of the block.
[[nodiscard]] Bytes FileOfEntryBlock(ByteView input);

}  // namespace sealkeeper::fuzz

#endif
