// SHA-256 on the SHA extensions of x86-64. Plain arrays throughout: inline functions of the
// standard library, compiled here with these instructions, could be the copies that the linker
// keeps for the whole program. For the same reason the lane loop and its switch are repeated in
// each kernel's file: instances of a template in a header would have external linkage, compiled
// with the flags of either kernel.
#include "catalogue/hashing/sha256_kernel.h"

#include <immintrin.h>

#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/x86_features.h"

namespace sealkeeper {
namespace {

// Four rounds use four words of the message schedule: one vector.
constexpr std::size_t kRoundGroups = kSha256Rounds / 4;
constexpr std::size_t kMessageVectors = 4;

__m128i Load(const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

void Store(void* to, __m128i vector) {
    _mm_storeu_si128(static_cast<__m128i*>(to), vector);
}

// The eight state words in the order that the instructions need: a, b, e, f and c, d, g, h.
struct State {
    __m128i abef;
    __m128i cdgh;
};

State LoadState(const std::uint32_t* words) {
    const __m128i cdab = _mm_shuffle_epi32(Load(words), 0xB1);
    const __m128i efgh = _mm_shuffle_epi32(Load(words + 4), 0x1B);
    return {_mm_alignr_epi8(cdab, efgh, 8), _mm_blend_epi16(efgh, cdab, 0xF0)};
}

void StoreState(const State& state, std::uint32_t* words) {
    const __m128i feba = _mm_shuffle_epi32(state.abef, 0x1B);
    const __m128i dchg = _mm_shuffle_epi32(state.cdgh, 0xB1);
    Store(words, _mm_blend_epi16(feba, dchg, 0xF0));
    Store(words + 4, _mm_alignr_epi8(dchg, feba, 8));
}

// The next vector of the message schedule (FIPS 180-4, 6.2.2), from the four before it. It replaces
// the oldest.
[[gnu::always_inline]] inline __m128i NextMessage(const __m128i* message, std::size_t group) {
    const __m128i oldest = message[group % kMessageVectors];
    const __m128i second = message[(group + 1) % kMessageVectors];
    const __m128i third = message[(group + 2) % kMessageVectors];
    const __m128i newest = message[(group + 3) % kMessageVectors];
    const __m128i sum =
        _mm_add_epi32(_mm_sha256msg1_epu32(oldest, second), _mm_alignr_epi8(newest, third, 4));
    return _mm_sha256msg2_epu32(sum, newest);
}

[[gnu::always_inline]] inline void FourRounds(State& state, __m128i message, std::size_t group) {
    const __m128i input = _mm_add_epi32(message, Load(kSha256RoundConstants + 4 * group));
    state.cdgh = _mm_sha256rnds2_epu32(state.cdgh, state.abef, input);
    state.abef = _mm_sha256rnds2_epu32(state.abef, state.cdgh, _mm_shuffle_epi32(input, 0x0E));
}

// Interleaves the lanes every four rounds, so that the processor can work on the others while one
// waits.
template <std::size_t kLanes>
void CompressLanes(const Sha256Lane* lanes, std::size_t blockCount) {
    const __m128i bigEndian = _mm_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203);
    State states[kLanes];
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        states[lane] = LoadState(lanes[lane].state);
    }
    for (std::size_t block = 0; block < blockCount; ++block) {
        State before[kLanes];
        __m128i messages[kLanes][kMessageVectors];
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            before[lane] = states[lane];
        }
#pragma GCC unroll 16
        for (std::size_t group = 0; group < kRoundGroups; ++group) {
#pragma GCC unroll 4
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                __m128i& message = messages[lane][group % kMessageVectors];
                if (group < kMessageVectors) {
                    const std::uint8_t* blocks = lanes[lane].blocks + block * kSha256BlockBytes;
                    message = _mm_shuffle_epi8(Load(blocks + 16 * group), bigEndian);
                } else {
                    message = NextMessage(messages[lane], group);
                }
                FourRounds(states[lane], message, group);
            }
        }
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            states[lane].abef = _mm_add_epi32(states[lane].abef, before[lane].abef);
            states[lane].cdgh = _mm_add_epi32(states[lane].cdgh, before[lane].cdgh);
        }
    }
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        StoreState(states[lane], lanes[lane].state);
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
    return ProcessorX86Features().shaExtensions;
}

}  // namespace

constinit const Sha256Kernel kShaExtensionsSha256Kernel = {"SHA extensions", kMaxLanes, IsSupported,
                                                           Compress};

}  // namespace sealkeeper
