// Compresses the entry block of a catalogue; see lzw_format.h.
#ifndef SEALKEEPER_CATALOGUE_LZW_COMPRESSOR_H
#define SEALKEEPER_CATALOGUE_LZW_COMPRESSOR_H

#include <cstdint>
#include <span>
#include <vector>

namespace sealkeeper {

// Appends the compressed form of `input`, which is not empty, to `output`.
void CompressLzw(std::span<const std::uint8_t> input, std::vector<std::uint8_t>& output);

}  // namespace sealkeeper

#endif
