// Little-endian numbers in byte buffers, whatever the byte order of the machine. The caller must
// have checked that the bytes are there.
#ifndef SEALKEEPER_PLATFORM_LITTLE_ENDIAN_H
#define SEALKEEPER_PLATFORM_LITTLE_ENDIAN_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

namespace sealkeeper {

// Writes `number` to the first sizeof(number) bytes of `bytes`.
template <typename Unsigned>
void StoreLittleEndian(Unsigned number, std::span<std::uint8_t> bytes) {
    static_assert(std::is_unsigned_v<Unsigned>);
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        bytes[i] = static_cast<std::uint8_t>(number >> (8 * i));
    }
}

// The number in the first sizeof(Unsigned) bytes of `bytes`.
template <typename Unsigned>
[[nodiscard]] Unsigned LoadLittleEndian(std::span<const std::uint8_t> bytes) {
    static_assert(std::is_unsigned_v<Unsigned>);
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        number |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
    }
    return static_cast<Unsigned>(number);
}

}  // namespace sealkeeper

#endif
