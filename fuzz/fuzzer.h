// A fuzzer is one function that takes any bytes. libFuzzer and replay_main call it.
#ifndef SEALKEEPER_FUZZ_FUZZER_H
#define SEALKEEPER_FUZZ_FUZZER_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace sealkeeper::fuzz {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

// Aborts the run if `condition` is false, in every build type.
inline void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

// Discards what the code under test writes to standard output. Fuzzers report on standard error.
inline void SilenceConsole() {
    static const bool isSilent = std::freopen("/dev/null", "w", stdout) != nullptr;
    Require(isSilent);
}

// Takes the first byte from `input`; 0 when there is none.
inline std::uint8_t TakeByte(ByteView& input) {
    if (input.empty()) {
        return 0;
    }
    const std::uint8_t first = input.front();
    input = input.subspan(1);
    return first;
}

}  // namespace sealkeeper::fuzz

#endif
