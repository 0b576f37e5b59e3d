// SHA-256 on the SHA extensions of x86-64.
#include "catalogue/hashing/sha256_kernel.h"

#include <immintrin.h>

#include "catalogue/hashing/sha256_interleaved_rounds.h"
#include "catalogue/hashing/x86_features.h"

namespace sealkeeper {
namespace {

__m128i Load(const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

void Store(void* to, __m128i vector) {
    _mm_storeu_si128(static_cast<__m128i*>(to), vector);
}

struct ShaExtensions {
    using Vector = __m128i;

    // In the order that the instructions need: a, b, e, f and c, d, g, h.
    struct State {
        __m128i abef;
        __m128i cdgh;
    };

    static State LoadState(const std::uint32_t* words) {
        const __m128i cdab = _mm_shuffle_epi32(Load(words), 0xB1);
        const __m128i efgh = _mm_shuffle_epi32(Load(words + 4), 0x1B);
        return {_mm_alignr_epi8(cdab, efgh, 8), _mm_blend_epi16(efgh, cdab, 0xF0)};
    }

    static void StoreState(const State& state, std::uint32_t* words) {
        const __m128i feba = _mm_shuffle_epi32(state.abef, 0x1B);
        const __m128i dchg = _mm_shuffle_epi32(state.cdgh, 0xB1);
        Store(words, _mm_blend_epi16(feba, dchg, 0xF0));
        Store(words + 4, _mm_alignr_epi8(dchg, feba, 8));
    }

    static State AddStates(const State& x, const State& y) {
        return {_mm_add_epi32(x.abef, y.abef), _mm_add_epi32(x.cdgh, y.cdgh)};
    }

    [[gnu::always_inline]] static inline Vector LoadMessage(const std::uint8_t* bytes) {
        const __m128i bigEndian = _mm_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203);
        return _mm_shuffle_epi8(Load(bytes), bigEndian);
    }

    [[gnu::always_inline]] static inline Vector NextMessage(Vector oldest, Vector second,
                                                            Vector third, Vector newest) {
        const __m128i sum =
            _mm_add_epi32(_mm_sha256msg1_epu32(oldest, second), _mm_alignr_epi8(newest, third, 4));
        return _mm_sha256msg2_epu32(sum, newest);
    }

    [[gnu::always_inline]] static inline void FourRounds(State& state, Vector message,
                                                         const std::uint32_t* constants) {
        const __m128i input = _mm_add_epi32(message, Load(constants));
        state.cdgh = _mm_sha256rnds2_epu32(state.cdgh, state.abef, input);
        state.abef = _mm_sha256rnds2_epu32(state.abef, state.cdgh, _mm_shuffle_epi32(input, 0x0E));
    }
};

bool IsSupported() {
    return ProcessorX86Features().shaExtensions;
}

}  // namespace

constinit const Sha256Kernel kShaExtensionsSha256Kernel = {
    "SHA extensions", kMaxInterleavedLanes, IsSupported, CompressUpToFour<ShaExtensions>};

}  // namespace sealkeeper
