#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "config/config_names.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/name_trouble.h"
#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

constexpr const char* kCure = "Save the file as UTF-8 without a byte-order mark.";

// An encoding by its mark, and by the opening brace that every configuration has.
struct WideEncoding {
    const char* name;
    std::string_view mark;
    std::string_view brace;
};

// UTF-32 comes first: the marks and the braces of UTF-16 are found in it, too.
constexpr std::array kWideEncodings = {
    WideEncoding{"UTF-32 (little-endian)", {"\xFF\xFE\0\0", 4}, {"{\0\0\0", 4}},
    WideEncoding{"UTF-32 (big-endian)", {"\0\0\xFE\xFF", 4}, {"\0\0\0{", 4}},
    WideEncoding{"UTF-16 (little-endian)", {"\xFF\xFE", 2}, {"{\0", 2}},
    WideEncoding{"UTF-16 (big-endian)", {"\xFE\xFF", 2}, {"\0{", 2}},
};

// Whether `text`, read in units of the size of `unit`, has this one.
bool HasUnit(std::string_view text, std::string_view unit) {
    for (; text.size() >= unit.size(); text.remove_prefix(unit.size())) {
        if (text.starts_with(unit)) {
            return true;
        }
    }
    return false;
}

// Whether the name of a section is in `text` as the scanner reads it, one byte for each letter.
// Zeros after its last brace do not make such a text a wide one.
bool HasNarrowSectionName(std::string_view text) {
    const std::string lowerCased = LowerCasedAscii(text);
    return lowerCased.find(kInfoSection) != std::string::npos ||
           lowerCased.find(kSearchSection) != std::string::npos;
}

// Null for encodings with one-byte units.
const char* WideEncodingName(std::string_view text) {
    for (const WideEncoding& encoding : kWideEncodings) {
        if (text.starts_with(encoding.mark)) {
            return encoding.name;
        }
    }
    if (HasNarrowSectionName(text)) {
        return nullptr;
    }
    for (const WideEncoding& encoding : kWideEncodings) {
        if (HasUnit(text, encoding.brace)) {
            return encoding.name;
        }
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
