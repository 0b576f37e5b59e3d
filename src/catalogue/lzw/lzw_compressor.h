// Compresses the entry block of a catalogue; see lzw_format.h.
#ifndef SEALKEEPER_CATALOGUE_LZW_LZW_COMPRESSOR_H
#define SEALKEEPER_CATALOGUE_LZW_LZW_COMPRESSOR_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace sealkeeper {

// Lack of memory is an exception; after one, the compressor can only be destroyed.
class LzwCompressor {
  public:
    // Appends to `output`, which must not be used by anyone else until `Finish`. Reserves memory
    // there for about `expectedBytes` bytes of input; there may be more or fewer.
    explicit LzwCompressor(std::vector<std::uint8_t>& output, std::size_t expectedBytes = 0);
    LzwCompressor(const LzwCompressor&) = delete;
    LzwCompressor& operator=(const LzwCompressor&) = delete;
    ~LzwCompressor();

    // Adds input. How it is split over calls makes no difference to the output.
    void Append(std::span<const std::uint8_t> input);

    // Completes the output. At least one byte must have been appended. Call once.
    void Finish();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace sealkeeper

#endif
