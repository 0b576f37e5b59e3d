#include <string>
#include <string_view>

#include "inspect/lint/lint_rules.h"
#include "inspect/lint/name_trouble.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";
constexpr std::string_view kUtf32LittleEndianMark("\xFF\xFE\0\0", 4);
constexpr std::string_view kUtf32BigEndianMark("\0\0\xFE\xFF", 4);
constexpr const char* kCure = "Save the file as UTF-8 without a byte-order mark.";

// Every configuration has a brace. Where the units are bytes, no zero is beside one.
constexpr std::string_view kUtf16LittleEndianBrace("{\0", 2);
constexpr std::string_view kUtf16BigEndianBrace("\0{", 2);
constexpr std::string_view kUtf32LittleEndianBrace("{\0\0\0", 4);
constexpr std::string_view kUtf32BigEndianBrace("\0\0\0{", 4);

// Whether `text`, read in units of the size of `unit`, has this one.
bool HasUnit(std::string_view text, std::string_view unit) {
    for (; text.size() >= unit.size(); text.remove_prefix(unit.size())) {
        if (text.starts_with(unit)) {
            return true;
        }
    }
    return false;
}

// Null for encodings with one-byte units.
const char* WideEncodingName(std::string_view text) {
    // Checked before UTF-16, whose mark and braces are also found in it.
    if (text.starts_with(kUtf32LittleEndianMark) || HasUnit(text, kUtf32LittleEndianBrace)) {
        return "UTF-32 (little-endian)";
    }
    if (text.starts_with(kUtf32BigEndianMark) || HasUnit(text, kUtf32BigEndianBrace)) {
        return "UTF-32 (big-endian)";
    }
    if (text.starts_with(kUtf16LittleEndianMark) || HasUnit(text, kUtf16LittleEndianBrace)) {
        return "UTF-16 (little-endian)";
    }
    if (text.starts_with(kUtf16BigEndianMark) || HasUnit(text, kUtf16BigEndianBrace)) {
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
