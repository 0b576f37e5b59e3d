// Measures LZW in both directions on the entry block of a large catalogue, in pieces, as the
// program uses it. Rates count uncompressed bytes. Each run allocates its own memory.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_writer.h"
#include "catalogue/lzw/lzw_compressor.h"
#include "catalogue/lzw/lzw_decompressor.h"
#include "sample_entry_block.h"

namespace sealkeeper::bench {
namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes& EntryBlock() {
    static const Bytes block = MakeSampleEntryBlock(kSampleEntryCount);
    return block;
}

// Compresses in pieces, as the program does.
Bytes Compressed(const Bytes& block) {
    Bytes compressed;
    LzwCompressor compressor(compressed, block.size());
    for (auto left = std::span(block); !left.empty();) {
        const std::size_t pieceBytes = std::min(left.size(), kRecordsAtOnceBytes);
        compressor.Append(left.first(pieceBytes));
        left = left.subspan(pieceBytes);
    }
    compressor.Finish();
    return compressed;
}

void Compress(benchmark::State& state) {
    const Bytes& block = EntryBlock();
    std::size_t compressedBytes = 0;
    for (auto _ : state) {
        const Bytes compressed = Compressed(block);
        compressedBytes = compressed.size();
        benchmark::DoNotOptimize(compressed.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(block.size()));
    state.counters["compressedBytes"] = static_cast<double>(compressedBytes);
}
BENCHMARK(Compress)->Name("LZW/compress")->Unit(benchmark::kMillisecond);

// Decompresses in pieces of the length of a record and calls `compare` with each piece and its
// offset. Whether all calls returned true and nothing is left.
template <typename Compare>
bool Decompressed(const Bytes& compressed, std::size_t blockBytes, Compare compare) {
    auto block = LzwDecompressor::Open(compressed);
    if (!block || block->BytesLeft() != blockBytes) {
        return false;
    }
    std::array<std::uint8_t, entry_record::kFixedBytes> piece;
    for (std::size_t at = 0; at < blockBytes; at += piece.size()) {
        const auto read = std::span(piece).first(std::min(piece.size(), blockBytes - at));
        if (!block->Read(read) || !compare(read, at)) {
            return false;
        }
    }
    return true;
}

void Decompress(benchmark::State& state) {
    const Bytes& block = EntryBlock();
    const Bytes compressed = Compressed(block);
    const auto isAsInBlock = [&block](std::span<const std::uint8_t> piece, std::size_t at) {
        return std::equal(piece.begin(), piece.end(),
                          block.begin() + static_cast<std::ptrdiff_t>(at));
    };
    const auto isUsed = [](std::span<const std::uint8_t> piece, std::size_t /*at*/) {
        benchmark::DoNotOptimize(piece.data());
        return true;
    };
    bool isSound = Decompressed(compressed, block.size(), isAsInBlock);
    for (auto _ : state) {
        isSound = isSound && Decompressed(compressed, block.size(), isUsed);
    }
    if (!isSound) {
        state.SkipWithError("the block did not come back");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(block.size()));
}
BENCHMARK(Decompress)->Name("LZW/decompress")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sealkeeper::bench

BENCHMARK_MAIN();
