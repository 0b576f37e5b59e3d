#include <algorithm>
#include <cstddef>

#include "inspect/lint/lint_rules.h"
#include "inspect/lint/name_trouble.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view kUtf32LittleEndianMark("\xFF\xFE\0\0", 4);
constexpr std::string_view kUtf32BigEndianMark("\0\0\xFE\xFF", 4);
constexpr std::size_t kExaminedBytes = 512;
constexpr const char* kCure = "Save the file as UTF-8 without a byte-order mark.";

// Whether the byte at `position` of each pair is zero, more often than not, and the other byte
// never is.
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

// Null for encodings with one-byte units.
const char* WideEncodingName(std::string_view text) {
    // Checked first, since it begins with the mark of UTF-16.
    if (text.starts_with(kUtf32LittleEndianMark)) {
        return "UTF-32 (little-endian)";
    }
    if (text.starts_with(kUtf32BigEndianMark)) {
        return "UTF-32 (big-endian)";
    }
    if (text.starts_with(kUtf16LittleEndianMark) || IsZeroOfEachPair(text, 1)) {
        return "UTF-16 (little-endian)";
    }
    if (text.starts_with(kUtf16BigEndianMark) || IsZeroOfEachPair(text, 0)) {
        return "UTF-16 (big-endian)";
    }
    return nullptr;
}

}  // namespace

bool IsUtf16OrUtf32(std::string_view text) {
    return WideEncodingName(text) != nullptr;
}

void LintUtf16OrUtf32(const LintedText& linted, LintFindings& findings) {
    findings.Add(0,
                 std::string("The file is ") + WideEncodingName(linted.Text()) +
                     ", in which the tool finds no names.",
                 kCure);
}

void LintByteOrderMark(const LintedText& linted, LintFindings& findings) {
    if (StartsWithByteOrderMark(linted.Text())) {
        findings.Add(
            0,
            "The file begins with a byte-order mark, which becomes part of the first section's name, so that section is not recognised.",
            kCure);
    }
}

}  // namespace sealkeeper
