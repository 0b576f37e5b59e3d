// Which x86-64 instructions may be used: the processor has them, and the operating system saves
// their registers.
#ifndef SEALKEEPER_CATALOGUE_HASHING_X86_FEATURES_H
#define SEALKEEPER_CATALOGUE_HASHING_X86_FEATURES_H

#include <cstdint>

namespace sealkeeper {

struct X86Features {
    // SHA extensions, with SSSE3 and SSE4.1.
    bool shaExtensions;
    bool avx2;
    // AVX-512 F, BW and VL.
    bool avx512;
};

// What a processor reports about itself; all zero if it has no CPUID leaf 7.
struct X86Registers {
    // Of CPUID leaf 1.
    std::uint32_t leaf1Ecx;
    // Of CPUID leaf 7, sub-leaf 0.
    std::uint32_t leaf7Ebx;
    // The register states that the system saves, from XGETBV; 0 without that instruction.
    std::uint64_t xcr0;
};

[[nodiscard]] X86Features FeaturesOf(const X86Registers& registers);

// The features of this processor, read once per process. None on another architecture.
[[nodiscard]] const X86Features& ProcessorX86Features();

}  // namespace sealkeeper

#endif
