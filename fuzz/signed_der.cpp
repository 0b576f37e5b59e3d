#include "signed_der.h"

#include "runtime/sha256.h"

namespace sealkeeper::fuzz {
namespace {

constexpr std::uint8_t kBitStringTag = 0x03;
constexpr std::uint8_t kSequenceTag = 0x30;

struct Element {
    std::uint8_t tag = 0;
    ByteView content;
    // The content with its tag and length.
    ByteView whole;
};

// Takes a length from the start of `input`: one byte, or a count of length bytes and those bytes
// (X.690, 8.1.3). Accepts longer forms than DER allows, because the library does.
std::optional<std::size_t> TakeLength(ByteView& input) {
    constexpr std::uint8_t kLongForm = 0x80;
    constexpr std::size_t kMaxLengthBytes = 4;
    if (input.empty()) {
        return std::nullopt;
    }
    const std::uint8_t first = TakeByte(input);
    if (first < kLongForm) {
        return first;
    }
    const std::size_t count = first - kLongForm;
    if (count == 0 || count > kMaxLengthBytes || count > input.size()) {
        return std::nullopt;
    }
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i) {
        length = length << 8 | TakeByte(input);
    }
    return length;
}

std::optional<Element> TakeElement(ByteView& input) {
    const ByteView start = input;
    const std::uint8_t tag = TakeByte(input);
    const auto length = TakeLength(input);
    if (!length || *length > input.size()) {
        return std::nullopt;
    }
    const ByteView content = input.first(*length);
    input = input.subspan(*length);
    return Element{tag, content, start.first(start.size() - input.size())};
}

}  // namespace

std::optional<SignedDer> TakeApart(ByteView bytes) {
    const auto outer = TakeElement(bytes);
    if (!outer || outer->tag != kSequenceTag) {
        return std::nullopt;
    }
    ByteView inner = outer->content;
    const auto toBeSigned = TakeElement(inner);
    const auto algorithm = TakeElement(inner);
    const auto signature = TakeElement(inner);
    // The first byte of a bit string says how many bits of its last byte are unused.
    if (!toBeSigned || !algorithm || !signature || signature->tag != kBitStringTag ||
        signature->content.empty() || signature->content.front() != 0) {
        return std::nullopt;
    }
    return SignedDer{toBeSigned->whole, signature->content.subspan(1)};
}

bool IsSignedBy(ByteView bytes, const mbedtls_pk_context& key) {
    const auto parts = TakeApart(bytes);
    Sha256Digest digest{};
    if (!parts || ComputeSha256(parts->toBeSigned, digest) != 0) {
        return false;
    }
    // The library's function takes a pointer to a non-const key.
    auto* const verifier = const_cast<mbedtls_pk_context*>(&key);
    return mbedtls_pk_verify(verifier, MBEDTLS_MD_SHA256, digest.data(), digest.size(),
                             parts->signature.data(), parts->signature.size()) == 0;
}

}  // namespace sealkeeper::fuzz
