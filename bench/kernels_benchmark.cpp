// Measures every SHA-256 implementation that runs here, on data that stays in the L2 cache. Names
// are "SHA-256/implementation/lanes".
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "catalogue/hashing/sha256_engine.h"
#include "catalogue/hashing/sha256_kernel.h"
#include "catalogue/hashing/sha256_kernels.h"
#include "runtime/sha256.h"
#include "sample_data.h"
#if defined(SEALKEEPER_HAS_OPENSSL)
#include "openssl_benchmark.h"
#endif

namespace sealkeeper::bench {
namespace {

// The piece of one lane. From two lanes on, the pieces exceed the L1 cache of most processors.
// Those of all lanes fit the L2 cache.
constexpr std::size_t kPieceBytes = 32768;
// One block more than a piece, so that the pieces do not compete for the same L1 cache sets.
constexpr std::size_t kPieceStride = kPieceBytes + kSha256BlockBytes;

using Compressor = std::function<void(std::span<const Sha256Lane> lanes, std::size_t blockCount)>;

void HashLanes(benchmark::State& state, const Compressor& compress, std::size_t laneCount) {
    const std::vector<std::uint8_t> pieces = SampleBytes(laneCount * kPieceStride);
    std::array<std::array<std::uint32_t, kSha256StateWords>, kMaxSha256Lanes> states{};
    std::array<Sha256Lane, kMaxSha256Lanes> allLanes{};
    const auto lanes = std::span(allLanes).first(laneCount);
    for (std::size_t lane = 0; lane < laneCount; ++lane) {
        lanes[lane] = {states[lane].data(), pieces.data() + lane * kPieceStride};
    }
    for (auto _ : state) {
        compress(lanes, kPieceBytes / kSha256BlockBytes);
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(laneCount * kPieceBytes));
}

void RegisterLanes(const std::string& name, const Compressor& compress, std::size_t laneCount) {
    benchmark::RegisterBenchmark(
        ("SHA-256/" + name + "/" + std::to_string(laneCount)).c_str(),
        [compress, laneCount](benchmark::State& state) { HashLanes(state, compress, laneCount); });
}

void RegisterKernel(const Sha256Kernel& kernel) {
    const auto compress = [&kernel](std::span<const Sha256Lane> lanes, std::size_t blockCount) {
        kernel.compress(lanes.data(), lanes.size(), blockCount);
    };
    for (const std::size_t laneCount : std::to_array<std::size_t>({1, 2, 3, 4, 8, 16})) {
        if (laneCount <= kernel.maxLanes) {
            RegisterLanes(kernel.name, compress, laneCount);
        }
    }
}

void RegisterEngine() {
    const auto compress = [](std::span<const Sha256Lane> lanes, std::size_t blockCount) {
        ProcessSha256Engine().Compress(lanes, blockCount);
    };
    for (std::size_t laneCount = 1; laneCount <= kMaxSha256Lanes; ++laneCount) {
        RegisterLanes("engine", compress, laneCount);
    }
}

void HashWithMbedTls(benchmark::State& state) {
    const std::vector<std::uint8_t> piece = SampleBytes(kPieceBytes);
    Sha256Digest digest{};
    for (auto _ : state) {
        if (ComputeSha256(piece, digest) != 0) {
            state.SkipWithError("mbed TLS cannot hash");
            break;
        }
        benchmark::DoNotOptimize(digest);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kPieceBytes));
}

void RegisterAll() {
    for (const Sha256Kernel* kernel : CompiledSha256Kernels()) {
        if (kernel->isSupported()) {
            RegisterKernel(*kernel);
        }
    }
    RegisterEngine();
    benchmark::RegisterBenchmark("SHA-256/mbed TLS/1", HashWithMbedTls);
#if defined(SEALKEEPER_HAS_OPENSSL)
    RegisterOpenSslBenchmark(kPieceBytes);
#endif
}

}  // namespace
}  // namespace sealkeeper::bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    sealkeeper::bench::RegisterAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
