#include "inspect/rules/case_folding.h"

#include <locale>
#include <optional>
#include <stdexcept>
#include <utility>

#include "inspect/report/utf8_text.h"
#include "platform/ascii_case.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

constexpr wchar_t kCapitalIWithDot = L'\u0130';
constexpr wchar_t kSmallDotlessI = L'\u0131';

// A locale whose letters are those of Unicode; nothing where none can be read.
// The first name is installed with glibc by most distributions, the second one with macOS. The
// user's own locale may have other letters. Why the files of a locale cannot be read is not known:
// glibc tries other names then, and errno is that of the last one.
std::optional<std::locale> ReadLocaleOfUnicode() {
    for (const char* const name : {"C.UTF-8", "en_US.UTF-8"}) {
        try {
            return std::optional<std::locale>(std::in_place, name);
        } catch (const std::runtime_error&) {
            continue;
        }
    }
    return std::nullopt;
}

const std::optional<std::locale>& LocaleOfUnicode() {
    static const std::optional<std::locale> locale = ReadLocaleOfUnicode();
    return locale;
}

// Small letters alone would keep apart what has one capital, as the two small sigmas.
wchar_t Folded(wchar_t character, const std::ctype<wchar_t>& letters) {
    // These have the capital or the small letter of an "i", but fold to none.
    const bool isItself = character == kCapitalIWithDot || character == kSmallDotlessI;
    return isItself ? character : letters.tolower(letters.toupper(character));
}

}  // namespace

std::string CaseFolded(const std::string& text) {
    if (!IsUtf8(text) || !KnowsLettersOfUnicode()) {
        return LowerCasedAscii(text);
    }
    const auto& letters = std::use_facet<std::ctype<wchar_t>>(*LocaleOfUnicode());
    std::wstring folded = Utf8ToWide(text);
    for (wchar_t& character : folded) {
        character = Folded(character, letters);
    }
    return WideToUtf8(folded);
}

bool KnowsLettersOfUnicode() {
    return LocaleOfUnicode().has_value();
}

}  // namespace sealkeeper
