// SHA-256 on the SHA-2 instructions of ARMv8. Plain arrays throughout: inline functions of the
// standard library, compiled here with these instructions, could be the copies that the linker
// keeps for the whole program. For the same reason the lane loop and its switch are repeated in
// each kernel's file: instances of a template in a header would have external linkage, compiled
// with the flags of either kernel.
#include "catalogue/hashing/sha256_kernel.h"

#include <arm_neon.h>
#if defined(__linux__)
#include <asm/hwcap.h>
#include <sys/auxv.h>
#endif

#include "catalogue/hashing/sha256_constants.h"

namespace sealkeeper {
namespace {

// Four rounds use four words of the message schedule: one vector.
constexpr std::size_t kRoundGroups = kSha256Rounds / 4;
constexpr std::size_t kMessageVectors = 4;

// The eight state words: a to d, and e to h.
struct State {
    uint32x4_t abcd;
    uint32x4_t efgh;
};

// Loads four words of a block, which are big-endian.
uint32x4_t LoadMessage(const std::uint8_t* bytes) {
    return vreinterpretq_u32_u8(vrev32q_u8(vld1q_u8(bytes)));
}

// The next vector of the message schedule (FIPS 180-4, 6.2.2), from the four before it. It replaces
// the oldest.
[[gnu::always_inline]] inline uint32x4_t NextMessage(const uint32x4_t* message, std::size_t group) {
    const uint32x4_t oldest = message[group % kMessageVectors];
    const uint32x4_t second = message[(group + 1) % kMessageVectors];
    const uint32x4_t third = message[(group + 2) % kMessageVectors];
    const uint32x4_t newest = message[(group + 3) % kMessageVectors];
    return vsha256su1q_u32(vsha256su0q_u32(oldest, second), third, newest);
}

[[gnu::always_inline]] inline void FourRounds(State& state, uint32x4_t message, std::size_t group) {
    const uint32x4_t input = vaddq_u32(message, vld1q_u32(kSha256RoundConstants + 4 * group));
    const uint32x4_t abcd = state.abcd;
    state.abcd = vsha256hq_u32(abcd, state.efgh, input);
    state.efgh = vsha256h2q_u32(state.efgh, abcd, input);
}

// Interleaves the lanes every four rounds, so that the processor can work on the others while one
// waits.
template <std::size_t kLanes>
void CompressLanes(const Sha256Lane* lanes, std::size_t blockCount) {
    State states[kLanes];
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        states[lane] = {vld1q_u32(lanes[lane].state), vld1q_u32(lanes[lane].state + 4)};
    }
    for (std::size_t block = 0; block < blockCount; ++block) {
        State before[kLanes];
        uint32x4_t messages[kLanes][kMessageVectors];
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            before[lane] = states[lane];
        }
#pragma GCC unroll 16
        for (std::size_t group = 0; group < kRoundGroups; ++group) {
#pragma GCC unroll 4
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                uint32x4_t& message = messages[lane][group % kMessageVectors];
                if (group < kMessageVectors) {
                    const std::uint8_t* blocks = lanes[lane].blocks + block * kSha256BlockBytes;
                    message = LoadMessage(blocks + 16 * group);
                } else {
                    message = NextMessage(messages[lane], group);
                }
                FourRounds(states[lane], message, group);
            }
        }
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            states[lane].abcd = vaddq_u32(states[lane].abcd, before[lane].abcd);
            states[lane].efgh = vaddq_u32(states[lane].efgh, before[lane].efgh);
        }
    }
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        vst1q_u32(lanes[lane].state, states[lane].abcd);
        vst1q_u32(lanes[lane].state + 4, states[lane].efgh);
    }
}

// The switch below has a case for each number of lanes.
constexpr std::size_t kMaxLanes = 4;
static_assert(kMaxLanes <= kMaxSha256Lanes);

void Compress(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
    switch (laneCount) {
        case 1:
            return CompressLanes<1>(lanes, blockCount);
        case 2:
            return CompressLanes<2>(lanes, blockCount);
        case 3:
            return CompressLanes<3>(lanes, blockCount);
        case 4:
            return CompressLanes<4>(lanes, blockCount);
        default:
            return;
    }
}

bool IsSupported() {
#if defined(__linux__)
    return (getauxval(AT_HWCAP) & HWCAP_SHA2) != 0;
#elif defined(__APPLE__)
    // Every 64-bit ARM processor that macOS runs on has them.
    return true;
#else
    return false;
#endif
}

}  // namespace

constinit const Sha256Kernel kArmSha256Kernel = {"ARMv8 SHA-2", kMaxLanes, IsSupported, Compress};

}  // namespace sealkeeper
