// Which instructions of x86-64 may be used: the processor has them, and the operating system saves
// the registers that they work on.
#ifndef SEALKEEPER_CATALOGUE_HASHING_X86_FEATURES_H
#define SEALKEEPER_CATALOGUE_HASHING_X86_FEATURES_H

#include <cstdint>

namespace sealkeeper {

struct X86Features {
    // SHA, with SSSE3 and SSE4.1.
    bool shaExtensions;
    bool avx2;
    // AVX-512 F, BW and VL.
    bool avx512;
};

// What a processor tells about itself: nothing where it has no leaf 7.
struct X86Registers {
    // Of CPUID leaf 1.
    std::uint32_t leaf1Ecx;
    // Of CPUID leaf 7, sub-leaf 0.
    std::uint32_t leaf7Ebx;
    // The states that are saved, as XGETBV tells; 0 when there is no such instruction.
    std::uint64_t xcr0;
};

[[nodiscard]] X86Features FeaturesOf(const X86Registers& registers);

// Of this processor, which is asked once in a process. None where it is of another architecture.
[[nodiscard]] const X86Features& ProcessorX86Features();

}  // namespace sealkeeper

#endif
