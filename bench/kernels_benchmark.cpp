// SHA-256 of every implementation that runs here, over data that stays in the processor's L2 cache.
// Names are "SHA-256/implementation/streams".
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "catalogue/hashing/sha256_kernel.h"
#include "catalogue/hashing/sha256_streams.h"
#include "sample_data.h"
#if defined(SEALKEEPER_HAS_OPENSSL)
#include "openssl_benchmark.h"
#endif

namespace sealkeeper::bench {
namespace {

// Of each stream: beyond the L1 cache, and four of them within the L2 cache.
constexpr std::size_t kPieceBytes = 65536;

using StreamsMaker = std::function<std::unique_ptr<Sha256Streams>()>;

void HashStreams(benchmark::State& state, const StreamsMaker& makeStreams,
                 std::size_t streamCount) {
    const std::vector<std::uint8_t> pieces = SampleBytes(streamCount * kPieceBytes);
    const std::unique_ptr<Sha256Streams> streams = makeStreams();
    std::array<Sha256Step, kMaxSha256Streams> steps{};
    for (std::size_t stream = 0; stream < streamCount; ++stream) {
        streams->Start(stream);
        steps[stream] = {stream, pieces.data() + stream * kPieceBytes};
    }
    for (auto _ : state) {
        streams->Take(std::span(steps).first(streamCount), kPieceBytes / kSha256BlockBytes);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(pieces.size()));
    for (std::size_t stream = 0; stream < streamCount; ++stream) {
        Sha256Digest digest{};
        if (streams->Finish(stream, {}, digest) != 0) {
            state.SkipWithError("no digest");
        }
    }
}

void RegisterStreams(const std::string& name, const StreamsMaker& makeStreams) {
    for (std::size_t streamCount = 1; streamCount <= kMaxSha256Streams; ++streamCount) {
        benchmark::RegisterBenchmark(
            ("SHA-256/" + name + "/" + std::to_string(streamCount)).c_str(),
            [makeStreams, streamCount](benchmark::State& state) {
                HashStreams(state, makeStreams, streamCount);
            });
    }
}

void RegisterAll() {
    const Sha256Kernel* const kernel = CompiledSha256Kernel();
    if (kernel != nullptr && kernel->isSupported()) {
        RegisterStreams(kernel->name, [kernel] { return MakeKernelSha256Streams(*kernel); });
    }
    RegisterStreams("mbed TLS", MakeMbedTlsSha256Streams);
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
