#include <algorithm>
#include <cstddef>

#include "inspect/lint/lint_rules.h"
#include "inspect/lint/name_trouble.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";
constexpr std::size_t kExaminedBytes = 512;
constexpr const char* kCure = "Save the file as UTF-8 without a byte-order mark.";

// Whether of each pair of bytes the one at `position` is zero, most often, and the other never.
bool IsZeroOfEachPair(std::string_view text, std::size_t position) {
    const std::size_t pairs = std::min(text.size(), kExaminedBytes) / 2;
    std::size_t zeros = 0;
    for (std::size_t pair = 0; pair < pairs; ++pair) {
        if (text[2 * pair + 1 - position] == '\0') {
            return false;
        }
        zeros += text[2 * pair + position] == '\0' ? 1U : 0U;
    }
    return zeros > pairs / 2;
}

bool IsLittleEndian(std::string_view text) {
    return text.starts_with(kLittleEndianMark) || IsZeroOfEachPair(text, 1);
}

bool IsBigEndian(std::string_view text) {
    return text.starts_with(kBigEndianMark) || IsZeroOfEachPair(text, 0);
}

}  // namespace

bool IsUtf16(std::string_view text) {
    return IsLittleEndian(text) || IsBigEndian(text);
}

void LintUtf16(const LintedText& linted, LintFindings& findings) {
    const char* const order = IsLittleEndian(linted.Text()) ? "little-endian" : "big-endian";
    findings.Add(
        0, std::string("The file is UTF-16 (") + order + "), in which the tool finds no names.",
        kCure);
}

void LintByteOrderMark(const LintedText& linted, LintFindings& findings) {
    if (StartsWithByteOrderMark(linted.Text())) {
        findings.Add(0,
                     "The file begins with a byte-order mark, which becomes part of the first "
                     "section's name, so that section is not recognised.",
                     kCure);
    }
}

}  // namespace sealkeeper
