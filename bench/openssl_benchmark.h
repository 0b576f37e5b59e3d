// SHA-256 through OpenSSL's EVP interface, for comparison.
#ifndef SEALKEEPER_BENCH_OPENSSL_BENCHMARK_H
#define SEALKEEPER_BENCH_OPENSSL_BENCHMARK_H

#include <cstddef>

namespace sealkeeper::bench {

// Registers "SHA-256/openssl EVP/1", which hashes pieces of `pieceBytes`.
void RegisterOpenSslBenchmark(std::size_t pieceBytes);

}  // namespace sealkeeper::bench

#endif
