#include "catalogue/hashing/sha256_padding.h"

#include <algorithm>

namespace sealkeeper {
namespace {

constexpr std::uint8_t kPaddingMark = 0x80;

void StoreBigEndian(std::uint64_t number, std::span<std::uint8_t> bytes) {
    for (std::size_t i = bytes.size(); i-- > 0; number >>= 8U) {
        bytes[i] = static_cast<std::uint8_t>(number);
    }
}

}  // namespace

std::size_t AppendSha256Padding(std::span<std::uint8_t> buffer, std::size_t lastBytes,
                                std::uint64_t messageBytes) {
    const std::size_t blockCount =
        (lastBytes + 1 + kSha256LengthBytes + kSha256BlockBytes - 1) / kSha256BlockBytes;
    const auto padding = buffer.first(blockCount * kSha256BlockBytes).subspan(lastBytes);
    std::fill(padding.begin(), padding.end(), std::uint8_t{0});
    padding.front() = kPaddingMark;
    StoreBigEndian(messageBytes * 8, padding.last(kSha256LengthBytes));
    return blockCount;
}

Sha256Digest DigestOf(std::span<const std::uint32_t, kSha256StateWords> state) {
    Sha256Digest digest{};
    for (std::size_t word = 0; word < state.size(); ++word) {
        StoreBigEndian(state[word], std::span(digest).subspan(word * sizeof(std::uint32_t),
                                                              sizeof(std::uint32_t)));
    }
    return digest;
}

}  // namespace sealkeeper
