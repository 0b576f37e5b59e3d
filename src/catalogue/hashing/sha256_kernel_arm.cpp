// SHA-256 on the SHA-2 instructions of ARMv8.
#include "catalogue/hashing/sha256_kernel.h"

#include <arm_neon.h>
#if defined(__linux__)
#include <asm/hwcap.h>
#include <sys/auxv.h>
#endif

#include "catalogue/hashing/sha256_interleaved_rounds.h"

namespace sealkeeper {
namespace {

struct ArmSha2 {
    using Vector = uint32x4_t;

    struct State {
        uint32x4_t abcd;
        uint32x4_t efgh;
    };

    static State LoadState(const std::uint32_t* words) {
        return {vld1q_u32(words), vld1q_u32(words + 4)};
    }

    static void StoreState(const State& state, std::uint32_t* words) {
        vst1q_u32(words, state.abcd);
        vst1q_u32(words + 4, state.efgh);
    }

    static State AddStates(const State& x, const State& y) {
        return {vaddq_u32(x.abcd, y.abcd), vaddq_u32(x.efgh, y.efgh)};
    }

    [[gnu::always_inline]] static inline Vector LoadMessage(const std::uint8_t* bytes) {
        return vreinterpretq_u32_u8(vrev32q_u8(vld1q_u8(bytes)));
    }

    [[gnu::always_inline]] static inline Vector NextMessage(Vector oldest, Vector second,
                                                            Vector third, Vector newest) {
        return vsha256su1q_u32(vsha256su0q_u32(oldest, second), third, newest);
    }

    [[gnu::always_inline]] static inline void FourRounds(State& state, Vector message,
                                                         const std::uint32_t* constants) {
        const uint32x4_t input = vaddq_u32(message, vld1q_u32(constants));
        const uint32x4_t abcd = state.abcd;
        state.abcd = vsha256hq_u32(abcd, state.efgh, input);
        state.efgh = vsha256h2q_u32(state.efgh, abcd, input);
    }
};

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

constinit const Sha256Kernel kArmSha256Kernel = {"ARMv8 SHA-2", kMaxInterleavedLanes, IsSupported,
                                                 CompressUpToFour<ArmSha2>};

}  // namespace sealkeeper
