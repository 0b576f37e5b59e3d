// Contents for tests that write or read whole files.
#ifndef SEALKEEPER_TESTS_SUPPORT_WHOLE_FILES_H
#define SEALKEEPER_TESTS_SUPPORT_WHOLE_FILES_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sealkeeper::test {

// Bytes of which no two neighbouring pages are alike.
[[nodiscard]] inline std::vector<std::uint8_t> Pattern(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 31 + i / 256);
    }
    return bytes;
}

// Round about a page, and more than one call of the system may take at once.
constexpr std::size_t kWholeFileSizes[] = {0, 1, 255, 4095, 4096, 4097, 3'000'001};

}  // namespace sealkeeper::test

#endif
