// Contents for tests that write or read whole files.
#ifndef SEALKEEPER_TESTS_SUPPORT_WHOLE_FILES_H
#define SEALKEEPER_TESTS_SUPPORT_WHOLE_FILES_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sealkeeper::test {

// Bytes in which no two adjacent pages are equal.
[[nodiscard]] inline std::vector<std::uint8_t> Pattern(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 31 + i / 256);
    }
    return bytes;
}

// Sizes around one page, and one that may take several system calls.
constexpr std::size_t kWholeFileSizes[] = {0, 1, 255, 4095, 4096, 4097, 3'000'001};

}  // namespace sealkeeper::test

#endif
