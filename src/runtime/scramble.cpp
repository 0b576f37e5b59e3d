#include "runtime/scramble.h"

#include <cstddef>

namespace sealkeeper {
namespace {

constexpr std::size_t kMinimumBytes = 2;

// What is added to the byte at `index`, modulo 256.
std::uint8_t PositionTerm(std::size_t index) {
    return static_cast<std::uint8_t>(3 * index);
}

}  // namespace

void Scramble(std::span<std::uint8_t> bytes) {
    if (bytes.size() < kMinimumBytes) {
        return;
    }
    // From front to back, so that each byte is combined with its still unscrambled successor.
    const std::size_t last = bytes.size() - 1;
    for (std::size_t i = 0; i < last; ++i) {
        bytes[i] = static_cast<std::uint8_t>(bytes[i] + bytes[i + 1] + PositionTerm(i));
    }
    bytes[last] = static_cast<std::uint8_t>(bytes[last] + PositionTerm(last));
}

void Unscramble(std::span<std::uint8_t> bytes) {
    if (bytes.size() < kMinimumBytes) {
        return;
    }
    const std::size_t last = bytes.size() - 1;
    bytes[last] = static_cast<std::uint8_t>(bytes[last] - PositionTerm(last));
    for (std::size_t i = last; i-- > 0;) {
        bytes[i] = static_cast<std::uint8_t>(bytes[i] - bytes[i + 1] - PositionTerm(i));
    }
}

}  // namespace sealkeeper
