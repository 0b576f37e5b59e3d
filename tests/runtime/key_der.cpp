#include "runtime/key_der.h"

#include <gtest/gtest.h>
#include <mbedtls/pem.h>

namespace sealkeeper::test {
namespace {

constexpr std::size_t kLongForm = 0x80;

// The tag and length at the start of an element.
struct Header {
    std::size_t bytes = 0;
    std::size_t contentBytes = 0;
};

Header HeaderOf(const std::string& element) {
    const std::size_t first = static_cast<std::uint8_t>(element.at(1));
    if (first < kLongForm) {
        return {2, first};
    }
    const std::size_t count = first - kLongForm;
    std::size_t length = 0;
    for (std::size_t i = 0; i < count; ++i) {
        length = length << 8U | static_cast<std::uint8_t>(element.at(2 + i));
    }
    return {2 + count, length};
}

std::string LengthOf(const std::string& content) {
    const std::size_t length = content.size();
    if (length < kLongForm) {
        return {static_cast<char>(length)};
    }
    std::string bytes;
    for (std::size_t rest = length; rest > 0; rest >>= 8U) {
        bytes.insert(bytes.begin(), static_cast<char>(rest & 0xFFU));
    }
    return static_cast<char>(kLongForm + bytes.size()) + bytes;
}

}  // namespace

std::string DerElement(std::uint8_t tag, const std::string& content) {
    return static_cast<char>(tag) + LengthOf(content) + content;
}

std::string DerInteger(const std::string& content) {
    return DerElement(kIntegerTag, content);
}

std::string DerContent(const std::string& element) {
    const Header header = HeaderOf(element);
    return element.substr(header.bytes, header.contentBytes);
}

std::vector<std::string> DerElements(const std::string& sequence) {
    EXPECT_EQ(static_cast<std::uint8_t>(sequence.at(0)), kSequenceTag);
    const std::string content = DerContent(sequence);
    std::vector<std::string> elements;
    for (std::size_t at = 0; at < content.size();) {
        const std::string rest = content.substr(at);
        const Header header = HeaderOf(rest);
        elements.push_back(rest.substr(0, header.bytes + header.contentBytes));
        at += header.bytes + header.contentBytes;
    }
    EXPECT_EQ(DerSequence(elements), sequence);
    return elements;
}

std::string DerSequence(const std::vector<std::string>& elements) {
    std::string content;
    for (const std::string& element : elements) {
        content += element;
    }
    return DerElement(kSequenceTag, content);
}

std::string WithElement(const std::string& sequence, std::size_t index,
                        const std::string& element) {
    std::vector<std::string> elements = DerElements(sequence);
    elements.at(index) = element;
    return DerSequence(elements);
}

std::string Algorithm(const std::string& identifier, const std::string& parameters) {
    constexpr std::uint8_t kObjectIdentifierTag = 0x06;
    return DerElement(kSequenceTag, DerElement(kObjectIdentifierTag, identifier) + parameters);
}

std::string RsaAlgorithm() {
    constexpr std::uint8_t kNullTag = 0x05;
    return Algorithm(std::string(kRsaIdentifiers) + "\x01", DerElement(kNullTag, ""));
}

std::string Pkcs8(const std::string& key, const std::string& algorithm,
                  const std::string& attributes) {
    const std::string version = DerInteger(std::string(1, '\0'));
    return DerElement(kSequenceTag,
                      version + algorithm + DerElement(kOctetStringTag, key) + attributes);
}

std::string Pem(const std::string& label, const std::string& der) {
    const std::vector<unsigned char> bytes(der.begin(), der.end());
    std::vector<unsigned char> text(2 * der.size() + 200);
    std::size_t textBytes = 0;
    EXPECT_EQ(mbedtls_pem_write_buffer(("-----BEGIN " + label + "-----\n").c_str(),
                                       ("-----END " + label + "-----\n").c_str(), bytes.data(),
                                       bytes.size(), text.data(), text.size(), &textBytes),
              0);
    // The size includes the zero after the text.
    return {text.begin(), text.begin() + static_cast<std::ptrdiff_t>(textBytes) - 1};
}

}  // namespace sealkeeper::test
