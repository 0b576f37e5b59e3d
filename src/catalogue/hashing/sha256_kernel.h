// SHA-256 (FIPS 180-4) on the instructions that some processors have for it, for several messages
// at once: one alone waits for its own latency.
//
// Each kernel is a file of its own, compiled with the flags of its instructions; nothing inline is
// shared into it, so that none of them gets into code that runs without a check of the processor.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_H

#include <cstddef>
#include <cstdint>

namespace sealkeeper {

inline constexpr std::size_t kSha256BlockBytes = 64;
inline constexpr std::size_t kSha256StateWords = 8;

// The lanes of the widest kernel.
inline constexpr std::size_t kMaxSha256Lanes = 16;

// One message's part in a call.
struct Sha256Lane {
    // The hash value so far (FIPS 180-4, 6.2), updated.
    std::uint32_t* state;
    // Whole blocks, of any alignment.
    const std::uint8_t* blocks;
};

struct Sha256Kernel {
    const char* name;
    std::size_t maxLanes;
    // Whether this processor has the instructions.
    bool (*isSupported)();
    // Takes in `blockCount` blocks of each of `laneCount` messages, at most `maxLanes`, all of them
    // different. Without lanes or without blocks nothing changes, and null stands for none.
    void (*compress)(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount);
    // Whether each lane is one element of the vectors: a call then takes the same time for any
    // number of lanes.
    bool isWide = false;
};

// The kernels that exist. Each is defined where the compiler targets its architecture, alone.
extern const Sha256Kernel kShaExtensionsSha256Kernel;
extern const Sha256Kernel kAvx512Sha256Kernel;
extern const Sha256Kernel kAvx2Sha256Kernel;
extern const Sha256Kernel kArmSha256Kernel;
// Defined everywhere, and supported by every processor.
extern const Sha256Kernel kPortableSha256Kernel;

}  // namespace sealkeeper

#endif
