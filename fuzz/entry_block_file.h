// A catalogue file around an entry block, for fuzzers that test only the block.
#ifndef SEALKEEPER_FUZZ_ENTRY_BLOCK_FILE_H
#define SEALKEEPER_FUZZ_ENTRY_BLOCK_FILE_H

#include "fuzzer.h"

namespace sealkeeper::fuzz {

// `input` is a four-byte entry count and the uncompressed entry block. The catalogue is otherwise
// valid. Empty when the block has no bytes. Each byte gets its own code: searching for longer
// strings would take most of the time and not test the block.
[[nodiscard]] Bytes FileOfEntryBlock(ByteView input);

}  // namespace sealkeeper::fuzz

#endif
