// SHA-256 (FIPS 180-4) on the instructions that some processors have for it, for one stream and for
// several that are interleaved: one alone waits for its own latency.
//
// Each kernel is a file of its own, compiled with the flag of its instructions; nothing inline is
// shared into it, so that none of them gets into code that runs without a check of the processor.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_H

#include <cstddef>
#include <cstdint>

namespace sealkeeper {

inline constexpr std::size_t kSha256BlockBytes = 64;
inline constexpr std::size_t kSha256StateWords = 8;

// The most streams that one call of a kernel takes.
inline constexpr std::size_t kMaxSha256Streams = 4;

// One stream's part in a call.
struct Sha256Lane {
    // The hash value so far (FIPS 180-4, 6.2), updated.
    std::uint32_t* state;
    // Whole blocks, of any alignment.
    const std::uint8_t* blocks;
};

struct Sha256Kernel {
    const char* name;
    // Whether this processor has the instructions.
    bool (*isSupported)();
    // Takes in `blockCount` blocks of each of `laneCount` streams, at most `kMaxSha256Streams`, all
    // of them different. Without lanes or without blocks nothing changes, and null stands for none.
    void (*compress)(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount);
};

// The kernels that exist. Each is defined where the compiler targets its architecture, alone.
extern const Sha256Kernel kX86Sha256Kernel;
extern const Sha256Kernel kArmSha256Kernel;

}  // namespace sealkeeper

#endif
