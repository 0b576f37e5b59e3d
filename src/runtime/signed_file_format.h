// What the two signed file formats, the hash catalogue and runtime.conf, have in common.
#ifndef SEALKEEPER_RUNTIME_SIGNED_FILE_FORMAT_H
#define SEALKEEPER_RUNTIME_SIGNED_FILE_FORMAT_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace sealkeeper::signed_file {

// "QVR" and a zero byte, at the start of the file.
inline constexpr std::array<std::uint8_t, 4> kMagic = {0x51, 0x56, 0x52, 0x00};

// The same bytes as a little-endian number.
inline constexpr std::uint32_t kMagicNumber = 0x00525651;

// Whether `file` begins with the magic.
[[nodiscard]] inline bool HasMagic(std::span<const std::uint8_t> file) {
    return file.size() >= kMagic.size() && std::equal(kMagic.begin(), kMagic.end(), file.begin());
}

// Room for the signature of an 8192-bit key. The rest of the area is zero.
inline constexpr std::size_t kSignatureAreaBytes = 1024;

}  // namespace sealkeeper::signed_file

#endif
