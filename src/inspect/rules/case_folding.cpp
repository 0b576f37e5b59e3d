#include "inspect/rules/case_folding.h"

#include <locale>
#include <stdexcept>

#include "inspect/rules/no_utf8_names.h"
#include "platform/ascii_case.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

constexpr wchar_t kCapitalIWithDot = L'\u0130';
constexpr wchar_t kSmallDotlessI = L'\u0131';

// A locale whose letters are those of Unicode. The first name is one that glibc always has, the
// second one of macOS. None is set: the letters of the user's own locale may be other ones.
std::locale UnicodeLocale() {
    for (const char* const name : {"C.UTF-8", "en_US.UTF-8"}) {
        try {
            return std::locale(name);
        } catch (const std::runtime_error&) {
            continue;
        }
    }
    return std::locale::classic();
}

// Small letters alone would keep apart what has one capital, as the two small sigmas.
wchar_t Folded(wchar_t character, const std::ctype<wchar_t>& letters) {
    // These have the capital or the small letter of an "i", but fold to none.
    const bool isItself = character == kCapitalIWithDot || character == kSmallDotlessI;
    return isItself ? character : letters.tolower(letters.toupper(character));
}

}  // namespace

std::string CaseFolded(const std::string& text) {
    if (!IsUtf8(text)) {
        return LowerCasedAscii(text);
    }
    static const std::locale locale = UnicodeLocale();
    const auto& letters = std::use_facet<std::ctype<wchar_t>>(locale);
    std::wstring folded = Utf8ToWide(text);
    for (wchar_t& character : folded) {
        character = Folded(character, letters);
    }
    return WideToUtf8(folded);
}

}  // namespace sealkeeper
