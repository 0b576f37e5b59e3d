#include "openssl_benchmark.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "sample_data.h"

namespace sealkeeper::bench {
namespace {

struct ContextDeleter {
    void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

void HashWithEvp(benchmark::State& state, std::size_t pieceBytes) {
    const std::vector<std::uint8_t> piece = SampleBytes(pieceBytes);
    const std::unique_ptr<EVP_MD_CTX, ContextDeleter> context(EVP_MD_CTX_new());
    if (context == nullptr || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1) {
        state.SkipWithError("EVP_DigestInit_ex failed");
        return;
    }
    for (auto _ : state) {
        if (EVP_DigestUpdate(context.get(), piece.data(), piece.size()) != 1) {
            state.SkipWithError("EVP_DigestUpdate failed");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(pieceBytes));
}

}  // namespace

void RegisterOpenSslBenchmark(std::size_t pieceBytes) {
    benchmark::RegisterBenchmark("SHA-256/openssl EVP/1", [pieceBytes](benchmark::State& state) {
        HashWithEvp(state, pieceBytes);
    });
}

}  // namespace sealkeeper::bench
