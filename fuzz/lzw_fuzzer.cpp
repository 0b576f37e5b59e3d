// Feeds any bytes as a compressed block.
#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "catalogue/lzw/lzw_decompressor.h"
#include "fuzzer.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sealkeeper;
    auto block = LzwDecompressor::Open(std::span(data, size));
    if (!block) {
        return 0;
    }
    // A prime length, so that reads do not line up with internal buffers.
    std::array<std::uint8_t, 997> piece{};
    while (block->BytesLeft() > 0) {
        const std::uint64_t left = block->BytesLeft();
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left, piece.size()));
        fuzz::Require(block->Read(std::span(piece).first(count)));
        fuzz::Require(block->BytesLeft() == left - count);
    }
    fuzz::Require(!block->Read(std::span(piece).first(1)));
    return 0;
}
