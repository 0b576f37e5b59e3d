// Any bytes, compressed and decompressed in pieces, must come back unchanged. The compressed form
// must equal that of a plain implementation of the format.
#include <algorithm>
#include <span>

#include "catalogue/lzw/lzw_compressor.h"
#include "catalogue/lzw/lzw_decompressor.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "fuzzer.h"

namespace {

using namespace sealkeeper;
using fuzz::Bytes;
using fuzz::ByteView;

// About twice as much as fills the dictionary.
constexpr std::size_t kMaxBlockBytes = 8'192;

// Repeats `unit`, each time with other bits of `changing` flipped. So a short input can make long
// strings and fill the dictionary.
Bytes RepeatedBlock(ByteView unit, std::size_t repetitions, std::uint8_t changing) {
    Bytes block;
    for (std::size_t i = 0; i <= repetitions && block.size() < kMaxBlockBytes; ++i) {
        for (const std::uint8_t byte : unit) {
            block.push_back(byte ^ static_cast<std::uint8_t>(i & changing));
        }
    }
    block.resize(std::min(block.size(), kMaxBlockBytes));
    return block;
}

Bytes Compressed(ByteView block, std::size_t pieceBytes) {
    Bytes compressed;
    LzwCompressor compressor(compressed);
    while (!block.empty()) {
        const auto piece = block.first(std::min(block.size(), pieceBytes));
        compressor.Append(piece);
        block = block.subspan(piece.size());
    }
    compressor.Finish();
    return compressed;
}

Bytes Decompressed(ByteView compressed, std::size_t blockBytes, std::size_t pieceBytes) {
    auto opened = LzwDecompressor::Open(compressed);
    fuzz::Require(opened && opened->BytesLeft() == blockBytes);
    Bytes block(blockBytes);
    for (std::span<std::uint8_t> left(block); !left.empty();) {
        const auto piece = left.first(std::min(left.size(), pieceBytes));
        fuzz::Require(opened->Read(piece));
        left = left.subspan(piece.size());
    }
    fuzz::Require(opened->BytesLeft() == 0);
    return block;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteView input(data, size);
    const std::size_t appendedBytes = std::size_t{1} + fuzz::TakeByte(input);
    const std::size_t readBytes = std::size_t{1} + fuzz::TakeByte(input);
    const std::size_t repetitions = fuzz::TakeByte(input);
    const std::uint8_t changing = fuzz::TakeByte(input);
    if (input.empty()) {
        return 0;
    }
    const Bytes block = RepeatedBlock(input, repetitions, changing);
    const Bytes compressed = Compressed(block, appendedBytes);
    fuzz::Require(compressed == test::PackedCodes(test::CodesOf(block)));
    fuzz::Require(Decompressed(compressed, block.size(), readBytes) == block);
    return 0;
}
