// The entry block of a large game's catalogue.
#ifndef SEALKEEPER_BENCH_SAMPLE_ENTRY_BLOCK_H
#define SEALKEEPER_BENCH_SAMPLE_ENTRY_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sealkeeper::bench {

inline constexpr std::size_t kSampleEntryCount = 200'000;

// `entryCount` records of 1 to 3 chunks, with typical paths and random digests, the same in every
// run.
[[nodiscard]] std::vector<std::uint8_t> MakeSampleEntryBlock(std::size_t entryCount);

}  // namespace sealkeeper::bench

#endif
