// Shared by tests of the catalogue: bytes as text, and files of known content.
#ifndef SEALKEEPER_TESTS_CATALOGUE_CATALOGUE_TEST_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_CATALOGUE_TEST_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_entry.h"
#include "runtime/mbedtls_compat.h"

namespace sealkeeper::test {

inline constexpr const char* kDigestOfHello =
    "2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824";

[[nodiscard]] inline std::string Hex(std::span<const std::uint8_t> bytes) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0x0FU];
    }
    return text;
}

[[nodiscard]] inline std::string Sha256Hex(std::span<const std::uint8_t> bytes) {
    Sha256Digest digest{};
    return ComputeSha256(bytes, digest) == 0 ? Hex(digest) : "no digest";
}

[[nodiscard]] inline std::vector<std::string> DigestTexts(
    const std::vector<Sha256Digest>& digests) {
    std::vector<std::string> texts;
    for (const Sha256Digest& digest : digests) {
        texts.push_back(Hex(digest));
    }
    return texts;
}

[[nodiscard]] inline std::vector<std::uint8_t> BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

// Each byte is its index modulo 251, so that no two chunks are equal.
[[nodiscard]] inline std::string PatternText(std::size_t sizeBytes) {
    std::string text(sizeBytes, '\0');
    for (std::size_t i = 0; i < sizeBytes; ++i) {
        text[i] = static_cast<char>(i % 251);
    }
    return text;
}

// Removes progress dots: on a slow machine they appear between "..." and the line feed.
[[nodiscard]] inline std::string WithoutProgressDots(std::string text) {
    for (std::size_t at = text.find("..."); at != std::string::npos; at = text.find("...", at)) {
        at += 3;
        while (at < text.size() && text[at] == '.') {
            text.erase(at, 1);
        }
    }
    return text;
}

[[nodiscard]] inline PathField FieldOf(const std::u16string& text) {
    PathField field{};
    for (std::size_t i = 0; i < text.size(); ++i) {
        field.at(i) = text[i];
    }
    return field;
}

// The path field as text. Checks that only zeros follow the text.
[[nodiscard]] inline std::u16string TextOf(const PathField& field) {
    std::u16string text(field.begin(), field.end());
    const std::size_t last = text.find_last_not_of(u'\0');
    return text.substr(0, last == std::u16string::npos ? 0 : last + 1);
}

}  // namespace sealkeeper::test

#endif
