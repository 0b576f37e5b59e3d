// Compresses the entry block of a catalogue; see lzw_format.h.
#ifndef SEALKEEPER_CATALOGUE_LZW_LZW_COMPRESSOR_H
#define SEALKEEPER_CATALOGUE_LZW_LZW_COMPRESSOR_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace sealkeeper {

class LzwCompressor {
  public:
    // Appends to `output`, which is nobody else's until `Finish`, and makes room there for about
    // `expectedBytes` bytes of input; more may come, or less.
    explicit LzwCompressor(std::vector<std::uint8_t>& output, std::size_t expectedBytes = 0);
    LzwCompressor(const LzwCompressor&) = delete;
    LzwCompressor& operator=(const LzwCompressor&) = delete;
    ~LzwCompressor();

    // Takes in more bytes. How they are divided over calls makes no difference.
    void Append(std::span<const std::uint8_t> input);

    // Ends the compressed form of what was appended, which is at least one byte. Once.
    void Finish();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace sealkeeper

#endif
