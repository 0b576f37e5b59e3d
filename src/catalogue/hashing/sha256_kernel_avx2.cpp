// SHA-256 of 8 messages at once, on AVX2 vectors of 8 elements of 32 bits.
#include "catalogue/hashing/sha256_kernel.h"

#include <immintrin.h>

#include "catalogue/hashing/sha256_wide_rounds.h"
#include "catalogue/hashing/x86_features.h"

namespace sealkeeper {
namespace {

// The halves that _mm256_permute2x128_si256 selects from its two vectors.
constexpr int kLowHalves = 0x20;
constexpr int kHighHalves = 0x31;

// Row i of 8 becomes column i. The first two steps transpose 4x4 squares within each half of the
// vectors; the last step moves the halves into place.
[[gnu::always_inline]] inline void Transpose(__m256i* rows) {
    __m256i pairs[8];
#pragma GCC unroll 4
    for (int i = 0; i < 8; i += 2) {
        pairs[i] = _mm256_unpacklo_epi32(rows[i], rows[i + 1]);
        pairs[i + 1] = _mm256_unpackhi_epi32(rows[i], rows[i + 1]);
    }
    __m256i fours[8];
#pragma GCC unroll 2
    for (int i = 0; i < 8; i += 4) {
        fours[i] = _mm256_unpacklo_epi64(pairs[i], pairs[i + 2]);
        fours[i + 1] = _mm256_unpackhi_epi64(pairs[i], pairs[i + 2]);
        fours[i + 2] = _mm256_unpacklo_epi64(pairs[i + 1], pairs[i + 3]);
        fours[i + 3] = _mm256_unpackhi_epi64(pairs[i + 1], pairs[i + 3]);
    }
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
        rows[i] = _mm256_permute2x128_si256(fours[i], fours[4 + i], kLowHalves);
        rows[4 + i] = _mm256_permute2x128_si256(fours[i], fours[4 + i], kHighHalves);
    }
}

struct Avx2Vector {
    using Type = __m256i;
    static constexpr std::size_t kLanes = 8;

    static Type LoadUnaligned(const void* from) {
        return _mm256_loadu_si256(static_cast<const Type*>(from));
    }

    static Type Load(const std::uint32_t* words) { return LoadUnaligned(words); }

    static void Store(std::uint32_t* words, Type vector) {
        void* const to = words;
        _mm256_storeu_si256(static_cast<Type*>(to), vector);
    }

    // Half a block of each lane at a time.
    [[gnu::always_inline]] static inline void LoadMessage(const Sha256Lane* lanes,
                                                          std::size_t offset, Type* message) {
        const Type bigEndian = _mm256_broadcastsi128_si256(
            _mm_set_epi32(0x0c0d0e0f, 0x08090a0b, 0x04050607, 0x00010203));
#pragma GCC unroll 2
        for (std::size_t half = 0; half < 2; ++half) {
            Type* const rows = message + half * kLanes;
#pragma GCC unroll 8
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                const std::uint8_t* const bytes = lanes[lane].blocks + offset + half * sizeof(Type);
                rows[lane] = _mm256_shuffle_epi8(LoadUnaligned(bytes), bigEndian);
            }
            Transpose(rows);
        }
    }

    static Type Broadcast(std::uint32_t word) {
        return _mm256_set1_epi32(static_cast<int>(word));
    }

    static Type Add(Type x, Type y) {
        return _mm256_add_epi32(x, y);
    }

    template <int kBits>
    static Type RotateRight(Type x) {
        return _mm256_or_si256(_mm256_srli_epi32(x, kBits), _mm256_slli_epi32(x, 32 - kBits));
    }

    template <int kBits>
    static Type ShiftRight(Type x) {
        return _mm256_srli_epi32(x, kBits);
    }

    static Type Keep(Type x) {
        asm("" : "+x"(x));
        return x;
    }

    static Type Xor3(Type x, Type y, Type z) {
        return _mm256_xor_si256(_mm256_xor_si256(x, y), z);
    }

    static Type Choose(Type x, Type y, Type z) {
        return _mm256_xor_si256(_mm256_and_si256(_mm256_xor_si256(y, z), x), z);
    }

    static Type Majority(Type x, Type y, Type z) {
        return _mm256_or_si256(_mm256_and_si256(x, y), _mm256_and_si256(_mm256_or_si256(x, y), z));
    }
};

bool IsSupported() {
    return ProcessorX86Features().avx2;
}

}  // namespace

constinit const Sha256Kernel kAvx2Sha256Kernel = {"AVX2", Avx2Vector::kLanes, IsSupported,
                                                  CompressWide<Avx2Vector>, true};

}  // namespace sealkeeper
