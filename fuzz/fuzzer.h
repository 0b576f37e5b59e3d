// What a fuzzer is: one function that takes any bytes. libFuzzer calls it, and so does replay_main.
#ifndef SEALKEEPER_FUZZ_FUZZER_H
#define SEALKEEPER_FUZZ_FUZZER_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace sealkeeper::fuzz {

// Ends the run with a report, whatever the build type.
inline void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace sealkeeper::fuzz

#endif
