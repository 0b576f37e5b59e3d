// SHA-256 of 16 messages at once, on AVX-512 vectors of 16 elements of 32 bits. AVX-512 has a
// rotation, and any bitwise function of three operands, as one instruction.
#include "catalogue/hashing/sha256_kernel.h"

// The intrinsics of g++ 12 use uninitialised vectors and cause a false warning (GCC bug 105593).
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <immintrin.h>

#include "catalogue/hashing/sha256_wide_rounds.h"
#include "catalogue/hashing/x86_features.h"

namespace sealkeeper {
namespace {

// Truth tables of functions of three bits, for _mm512_ternarylogic_epi32.
constexpr int kXorOfThree = 0x96;
constexpr int kFirstChooses = 0xCA;
constexpr int kMajorityOfThree = 0xE8;

// The quarters that _mm512_shuffle_i32x4 selects: 0 and 2, or 1 and 3, of each vector.
constexpr int kEvenQuarters = 0x88;
constexpr int kOddQuarters = 0xDD;

// Row i of 16 becomes column i. The first two steps transpose 4x4 squares within each quarter of
// the vectors; the others move the quarters into place.
[[gnu::always_inline]] inline void Transpose(__m512i* rows) {
    __m512i pairs[16];
#pragma GCC unroll 8
    for (int i = 0; i < 16; i += 2) {
        pairs[i] = _mm512_unpacklo_epi32(rows[i], rows[i + 1]);
        pairs[i + 1] = _mm512_unpackhi_epi32(rows[i], rows[i + 1]);
    }
    __m512i fours[16];
#pragma GCC unroll 4
    for (int i = 0; i < 16; i += 4) {
        fours[i] = _mm512_unpacklo_epi64(pairs[i], pairs[i + 2]);
        fours[i + 1] = _mm512_unpackhi_epi64(pairs[i], pairs[i + 2]);
        fours[i + 2] = _mm512_unpacklo_epi64(pairs[i + 1], pairs[i + 3]);
        fours[i + 3] = _mm512_unpackhi_epi64(pairs[i + 1], pairs[i + 3]);
    }
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
        const __m512i even01 = _mm512_shuffle_i32x4(fours[i], fours[4 + i], kEvenQuarters);
        const __m512i odd01 = _mm512_shuffle_i32x4(fours[i], fours[4 + i], kOddQuarters);
        const __m512i even23 = _mm512_shuffle_i32x4(fours[8 + i], fours[12 + i], kEvenQuarters);
        const __m512i odd23 = _mm512_shuffle_i32x4(fours[8 + i], fours[12 + i], kOddQuarters);
        rows[i] = _mm512_shuffle_i32x4(even01, even23, kEvenQuarters);
        rows[4 + i] = _mm512_shuffle_i32x4(odd01, odd23, kEvenQuarters);
        rows[8 + i] = _mm512_shuffle_i32x4(even01, even23, kOddQuarters);
        rows[12 + i] = _mm512_shuffle_i32x4(odd01, odd23, kOddQuarters);
    }
}

struct Avx512Vector {
    using Type = __m512i;
    static constexpr std::size_t kLanes = 16;

    static Type Load(const std::uint32_t* words) { return _mm512_load_si512(words); }

    static void Store(std::uint32_t* words, Type vector) { _mm512_store_si512(words, vector); }

    [[gnu::always_inline]] static inline void LoadMessage(const Sha256Lane* lanes,
                                                          std::size_t offset, Type* message) {
        const Type bigEndian = _mm512_set4_epi32(0x0c0d0e0f, 0x08090a0b, 0x04050607, 0x00010203);
#pragma GCC unroll 16
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            message[lane] =
                _mm512_shuffle_epi8(_mm512_loadu_si512(lanes[lane].blocks + offset), bigEndian);
        }
        Transpose(message);
    }

    static Type Broadcast(std::uint32_t word) {
        return _mm512_set1_epi32(static_cast<int>(word));
    }

    static Type Add(Type x, Type y) {
        return _mm512_add_epi32(x, y);
    }

    static Type Subtract(Type x, Type y) {
        return _mm512_sub_epi32(x, y);
    }

    template <int kBits>
    static Type RotateRight(Type x) {
        return _mm512_ror_epi32(x, kBits);
    }

    template <int kBits>
    static Type ShiftRight(Type x) {
        return _mm512_srli_epi32(x, kBits);
    }

    static Type Keep(Type x) {
        asm("" : "+v"(x));
        return x;
    }

    static Type Xor3(Type x, Type y, Type z) {
        return _mm512_ternarylogic_epi32(x, y, z, kXorOfThree);
    }

    static Type Choose(Type x, Type y, Type z) {
        return _mm512_ternarylogic_epi32(x, y, z, kFirstChooses);
    }

    static Type Majority(Type x, Type y, Type z) {
        return _mm512_ternarylogic_epi32(x, y, z, kMajorityOfThree);
    }
};

bool IsSupported() {
    return ProcessorX86Features().avx512;
}

}  // namespace

constinit const Sha256Kernel kAvx512Sha256Kernel = {
    "AVX-512", Avx512Vector::kLanes, IsSupported,
    CompressWide<Avx512Vector, RoundSums::FewestAdditions>, true};

constinit const Sha256Kernel kAvx512ShortChainSha256Kernel = {
    "AVX-512, short chain", Avx512Vector::kLanes, IsSupported,
    CompressWide<Avx512Vector, RoundSums::ShortestChain>, true};

}  // namespace sealkeeper
