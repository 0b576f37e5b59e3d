#include "catalogue/hashing/x86_features.h"

#include <gtest/gtest.h>

#include <vector>

namespace sealkeeper {
namespace {

constexpr std::uint32_t Bit(unsigned number) {
    return std::uint32_t{1} << number;
}

constexpr std::uint32_t kSsse3 = Bit(9);
constexpr std::uint32_t kSse41 = Bit(19);
constexpr std::uint32_t kOsXsave = Bit(27);
constexpr std::uint32_t kAvx = Bit(28);
constexpr std::uint32_t kAllOfLeaf1 = kSsse3 | kSse41 | kOsXsave | kAvx;

constexpr std::uint32_t kAvx2 = Bit(5);
constexpr std::uint32_t kAvx512F = Bit(16);
constexpr std::uint32_t kSha = Bit(29);
constexpr std::uint32_t kAvx512Bw = Bit(30);
constexpr std::uint32_t kAvx512Vl = Bit(31);
constexpr std::uint32_t kAllOfLeaf7 = kAvx2 | kAvx512F | kSha | kAvx512Bw | kAvx512Vl;

// Bits 0 to 2 are the x87, SSE and AVX states; bits 5 to 7 are those of AVX-512.
constexpr std::uint64_t kAvxState = 0x07;
constexpr std::uint64_t kAllStates = 0xE7;

struct FeaturesCase {
    const char* description;
    X86Registers registers;
    bool shaExtensions;
    bool avx2;
    bool avx512;
};

TEST(X86Features, FollowFromTheRegisters) {
    const std::vector<FeaturesCase> cases = {
        {"nothing", {0, 0, 0}, false, false, false},
        {"everything", {kAllOfLeaf1, kAllOfLeaf7, kAllStates}, true, true, true},
        {"all bits", {~0U, ~0U, ~std::uint64_t{0}}, true, true, true},
        {"no SSSE3", {kAllOfLeaf1 & ~kSsse3, kAllOfLeaf7, kAllStates}, false, true, true},
        {"no SSE4.1", {kAllOfLeaf1 & ~kSse41, kAllOfLeaf7, kAllStates}, false, true, true},
        {"no SHA", {kAllOfLeaf1, kAllOfLeaf7 & ~kSha, kAllStates}, false, true, true},
        {"XGETBV is off", {kAllOfLeaf1 & ~kOsXsave, kAllOfLeaf7, kAllStates}, true, false, false},
        {"no AVX", {kAllOfLeaf1 & ~kAvx, kAllOfLeaf7, kAllStates}, true, false, false},
        {"no AVX2", {kAllOfLeaf1, kAllOfLeaf7 & ~kAvx2, kAllStates}, true, false, false},
        {"no AVX-512 F", {kAllOfLeaf1, kAllOfLeaf7 & ~kAvx512F, kAllStates}, true, true, false},
        {"no AVX-512 BW", {kAllOfLeaf1, kAllOfLeaf7 & ~kAvx512Bw, kAllStates}, true, true, false},
        {"no AVX-512 VL", {kAllOfLeaf1, kAllOfLeaf7 & ~kAvx512Vl, kAllStates}, true, true, false},
        {"no state is saved", {kAllOfLeaf1, kAllOfLeaf7, 0}, true, false, false},
        {"the AVX state is not saved", {kAllOfLeaf1, kAllOfLeaf7, 0xE3}, true, false, false},
        {"the SSE state is not saved", {kAllOfLeaf1, kAllOfLeaf7, 0xE5}, true, false, false},
        {"the AVX-512 state is withheld", {kAllOfLeaf1, kAllOfLeaf7, kAvxState}, true, true, false},
        {"the masks are not saved", {kAllOfLeaf1, kAllOfLeaf7, 0xC7}, true, true, false},
        {"the high halves are not saved", {kAllOfLeaf1, kAllOfLeaf7, 0xA7}, true, true, false},
        {"registers 16 to 31 are not saved", {kAllOfLeaf1, kAllOfLeaf7, 0x67}, true, true, false},
    };
    for (const FeaturesCase& featuresCase : cases) {
        SCOPED_TRACE(featuresCase.description);
        const X86Features features = FeaturesOf(featuresCase.registers);
        EXPECT_EQ(features.shaExtensions, featuresCase.shaExtensions);
        EXPECT_EQ(features.avx2, featuresCase.avx2);
        EXPECT_EQ(features.avx512, featuresCase.avx512);
    }
}

// Compared with the compiler's own check of processor and operating system.
#if defined(__x86_64__) && defined(__GNUC__)
TEST(X86Features, OfThisProcessorAreThoseThatTheCompilerSees) {
    const X86Features& features = ProcessorX86Features();
    EXPECT_EQ(features.avx2, __builtin_cpu_supports("avx2") != 0);
    EXPECT_EQ(features.avx512, __builtin_cpu_supports("avx512f") != 0 &&
                                   __builtin_cpu_supports("avx512bw") != 0 &&
                                   __builtin_cpu_supports("avx512vl") != 0);
}
#endif

}  // namespace
}  // namespace sealkeeper
