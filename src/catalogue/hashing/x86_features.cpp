// Bits as in Intel's Software Developer's Manual, volume 2A (CPUID) and volume 1, 13.3 (XCR0).
#include "catalogue/hashing/x86_features.h"

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace sealkeeper {
namespace {

constexpr std::uint32_t kSsse3 = 1U << 9U;
constexpr std::uint32_t kSse41 = 1U << 19U;
// The operating system has enabled XGETBV.
constexpr std::uint32_t kOsXsave = 1U << 27U;
constexpr std::uint32_t kAvx = 1U << 28U;

constexpr std::uint32_t kAvx2 = 1U << 5U;
constexpr std::uint32_t kAvx512F = 1U << 16U;
constexpr std::uint32_t kSha = 1U << 29U;
constexpr std::uint32_t kAvx512Bw = 1U << 30U;
constexpr std::uint32_t kAvx512Vl = 1U << 31U;

// The low 128 bits of vector registers 0 to 15, and the next 128 bits.
constexpr std::uint64_t kYmmState = 0x06;
// The mask registers, the high halves of vector registers 0 to 15, and vector registers 16 to 31.
constexpr std::uint64_t kZmmState = 0xE0;

template <typename Number>
bool HasAll(Number bits, Number wanted) {
    return (bits & wanted) == wanted;
}

#if defined(__x86_64__)

// XGETBV as bytes, so that no compiler needs a flag for it. Valid only with `kOsXsave`.
std::uint64_t ReadXcr0() {
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    asm volatile(".byte 0x0f, 0x01, 0xd0" : "=a"(low), "=d"(high) : "c"(0));
    return std::uint64_t{high} << 32U | low;
}

// Reads as few leaves as possible: in a virtual machine each one traps to the host.
X86Registers ReadRegisters() {
    constexpr unsigned kFeatures = 1;
    constexpr unsigned kExtendedFeatures = 7;
    const auto lastLeaf = static_cast<unsigned>(__get_cpuid_max(0, nullptr));
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    X86Registers registers{};
    if (lastLeaf < kExtendedFeatures) {
        return registers;
    }
    __cpuid(kFeatures, eax, ebx, ecx, edx);
    registers.leaf1Ecx = ecx;
    __cpuid_count(kExtendedFeatures, 0, eax, ebx, ecx, edx);
    registers.leaf7Ebx = ebx;
    if (HasAll(registers.leaf1Ecx, kOsXsave)) {
        registers.xcr0 = ReadXcr0();
    }
    return registers;
}

#else

X86Registers ReadRegisters() {
    return {};
}

#endif

}  // namespace

X86Features FeaturesOf(const X86Registers& registers) {
    const bool hasAvx2 = HasAll(registers.leaf1Ecx, kOsXsave | kAvx) &&
                         HasAll(registers.leaf7Ebx, kAvx2) && HasAll(registers.xcr0, kYmmState);
    X86Features features{};
    features.shaExtensions =
        HasAll(registers.leaf1Ecx, kSsse3 | kSse41) && HasAll(registers.leaf7Ebx, kSha);
    features.avx2 = hasAvx2;
    // Compilers assume AVX2 when they target AVX-512.
    features.avx512 = hasAvx2 && HasAll(registers.leaf7Ebx, kAvx512F | kAvx512Bw | kAvx512Vl) &&
                      HasAll(registers.xcr0, kZmmState);
    return features;
}

const X86Features& ProcessorX86Features() {
    static const X86Features features = FeaturesOf(ReadRegisters());
    return features;
}

}  // namespace sealkeeper
