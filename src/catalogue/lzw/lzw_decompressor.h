// Decompresses the entry block of a catalogue; see lzw_format.h.
#ifndef SEALKEEPER_CATALOGUE_LZW_LZW_DECOMPRESSOR_H
#define SEALKEEPER_CATALOGUE_LZW_LZW_DECOMPRESSOR_H

#include <cstdint>
#include <span>
#include <vector>

namespace sealkeeper {

// Appends the decompressed form of `input` to `output`. Input without the container's magic gives,
// deliberately, nothing; the bits behind the last whole code are not looked at. Returns false, with
// `output` as it was, when the width of a code is missing or 0, a code is not in the dictionary, or
// there would be less than `minimumBytes` or more than `kMaxUncompressedBytes` bytes. All of this
// is known before memory is asked for. Time is linear in the bytes read and produced.
[[nodiscard]] bool DecompressLzw(std::span<const std::uint8_t> input, std::uint64_t minimumBytes,
                                 std::vector<std::uint8_t>& output);

}  // namespace sealkeeper

#endif
