// Arbitrary bytes, the same in every run.
#ifndef SEALKEEPER_BENCH_SAMPLE_DATA_H
#define SEALKEEPER_BENCH_SAMPLE_DATA_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace sealkeeper::bench {

inline std::vector<std::uint8_t> SampleBytes(std::size_t sizeBytes) {
    std::mt19937_64 random(sizeBytes);
    std::vector<std::uint8_t> bytes(sizeBytes);
    std::generate(bytes.begin(), bytes.end(),
                  [&random] { return static_cast<std::uint8_t>(random()); });
    return bytes;
}

}  // namespace sealkeeper::bench

#endif
