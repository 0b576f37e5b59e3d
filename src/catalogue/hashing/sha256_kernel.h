// SHA-256 (FIPS 180-4) kernels: each uses the special instructions of some processors, for several
// messages at once, because a single message is bound by instruction latency.
//
// Each kernel is in its own file, compiled with the flags for its instructions. It shares no inline
// code with other files, except templates over a type in its own anonymous namespace
// (sha256_interleaved_rounds.h and sha256_wide_rounds.h), so that none of its instructions can get
// into code that runs without a check of the processor.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_KERNEL_H

#include <cstddef>
#include <cstdint>

namespace sealkeeper {

inline constexpr std::size_t kSha256BlockBytes = 64;
inline constexpr std::size_t kSha256StateWords = 8;

// The number of lanes of the widest kernel.
inline constexpr std::size_t kMaxSha256Lanes = 16;

// The part of one message in a call.
struct Sha256Lane {
    // The hash value so far (FIPS 180-4, 6.2); updated by the call.
    std::uint32_t* state;
    // Whole blocks, unaligned.
    const std::uint8_t* blocks;
};

struct Sha256Kernel {
    const char* name;
    std::size_t maxLanes;
    // Whether this processor has the instructions.
    bool (*isSupported)();
    // Hashes `blockCount` blocks of each of `laneCount` messages: at most `maxLanes`, all
    // different. Does nothing without lanes, when `lanes` may be null, or without blocks.
    void (*compress)(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount);
    // Whether each lane is one element of a vector: then a call takes the same time for any number
    // of lanes.
    bool isWide = false;
};

// The kernels. Each is defined only if the compiler targets its architecture. All are initialised
// at compile time: code that does so at the start would be compiled with the kernel's flags.
extern const Sha256Kernel kShaExtensionsSha256Kernel;
extern const Sha256Kernel kAvx512Sha256Kernel;
extern const Sha256Kernel kAvx512ShortChainSha256Kernel;
extern const Sha256Kernel kAvx2Sha256Kernel;
extern const Sha256Kernel kArmSha256Kernel;
// Defined everywhere and supported by every processor.
extern const Sha256Kernel kPortableSha256Kernel;

}  // namespace sealkeeper

#endif
