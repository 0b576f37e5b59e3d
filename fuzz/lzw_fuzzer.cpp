// Any bytes as a compressed block.
#include <span>
#include <vector>

#include "catalogue/lzw/lzw_decompressor.h"
#include "fuzzer.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sealkeeper;
    // What the buffer holds already stays.
    std::vector<std::uint8_t> output = {1, 2, 3};
    const bool isSound = DecompressLzw(std::span(data, size), 0, output);
    fuzz::Require(output.size() >= 3 && output[0] == 1 && output[2] == 3);
    fuzz::Require(isSound || output.size() == 3);
    return 0;
}
