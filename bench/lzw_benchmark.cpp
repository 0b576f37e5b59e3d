// LZW in both directions over the entry block of a large catalogue. Rates are of uncompressed
// bytes; each run asks for its memory anew, as the program does.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

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

// In pieces, as the program does.
Bytes Compressed(const Bytes& block) {
    constexpr std::size_t kPieceBytes = 262'144;
    Bytes compressed;
    LzwCompressor compressor(compressed, block.size());
    for (auto left = std::span(block); !left.empty();) {
        const std::size_t pieceBytes = std::min(left.size(), kPieceBytes);
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

void Decompress(benchmark::State& state) {
    const Bytes& block = EntryBlock();
    const Bytes compressed = Compressed(block);
    if (Bytes output; !DecompressLzw(compressed, block.size(), output) || output != block) {
        state.SkipWithError("the block did not come back");
        return;
    }
    for (auto _ : state) {
        Bytes output;
        if (!DecompressLzw(compressed, block.size(), output)) {
            state.SkipWithError("the block did not come back");
            break;
        }
        benchmark::DoNotOptimize(output.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(block.size()));
}
BENCHMARK(Decompress)->Name("LZW/decompress")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace sealkeeper::bench

BENCHMARK_MAIN();
