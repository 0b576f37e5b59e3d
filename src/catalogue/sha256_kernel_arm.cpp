// SHA-256 on the SHA-2 instructions of ARMv8. Plain arrays throughout: inline functions of the
// standard library, compiled here with these instructions, could be the copies that the linker
// keeps for all.
#if defined(__aarch64__)

#include "catalogue/sha256_kernel.h"

#include <arm_neon.h>
#if defined(__linux__)
#include <asm/hwcap.h>
#include <sys/auxv.h>
#endif

namespace sealkeeper {
namespace {

// Four rounds take four words of the message schedule, one vector.
constexpr std::size_t kRoundGroups = 16;
constexpr std::size_t kMessageVectors = 4;

// FIPS 180-4, 4.2.2.
alignas(16) constexpr std::uint32_t kRoundConstants[4 * kRoundGroups] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

// The eight state words, a to d and e to h.
struct State {
    uint32x4_t abcd;
    uint32x4_t efgh;
};

// Four words of a block, which are big-endian.
uint32x4_t LoadMessage(const std::uint8_t* bytes) {
    return vreinterpretq_u32_u8(vrev32q_u8(vld1q_u8(bytes)));
}

// The next vector of the message schedule (FIPS 180-4, 6.2.2) from the four before it, of which it
// replaces the oldest.
[[gnu::always_inline]] inline uint32x4_t NextMessage(const uint32x4_t* message, std::size_t group) {
    const uint32x4_t oldest = message[group % kMessageVectors];
    const uint32x4_t second = message[(group + 1) % kMessageVectors];
    const uint32x4_t third = message[(group + 2) % kMessageVectors];
    const uint32x4_t newest = message[(group + 3) % kMessageVectors];
    return vsha256su1q_u32(vsha256su0q_u32(oldest, second), third, newest);
}

[[gnu::always_inline]] inline void FourRounds(State& state, uint32x4_t message, std::size_t group) {
    const uint32x4_t input = vaddq_u32(message, vld1q_u32(kRoundConstants + 4 * group));
    const uint32x4_t abcd = state.abcd;
    state.abcd = vsha256hq_u32(abcd, state.efgh, input);
    state.efgh = vsha256h2q_u32(state.efgh, abcd, input);
}

// Goes through the lanes in turn after every four rounds, so that the processor has the others to
// work on while one waits.
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

void Compress(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
    switch (laneCount) {
        case 1:
            return CompressLanes<1>(lanes, blockCount);
        case 2:
            return CompressLanes<2>(lanes, blockCount);
        case 3:
            return CompressLanes<3>(lanes, blockCount);
        default:
            return CompressLanes<4>(lanes, blockCount);
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

const Sha256Kernel kArmSha256Kernel = {"ARMv8 SHA-2", IsSupported, Compress};

}  // namespace sealkeeper

#endif
