#include "inspect/rules/case_folding.h"

#include <wctype.h>
#ifdef __APPLE__
#include <xlocale.h>
#else
#include <locale.h>
#endif

#include "inspect/report/utf8_text.h"
#include "platform/ascii_case.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

constexpr wchar_t kCapitalIWithDot = L'\u0130';
constexpr wchar_t kSmallDotlessI = L'\u0131';

// A locale whose letters are those of Unicode. Not std::locale: libstdc++ crashes where memory
// fails while it makes one.
class UnicodeLetters {
  public:
    // The first name is installed with glibc by most distributions, the second one with macOS. The
    // user's own locale may have other letters.
    UnicodeLetters() {
        for (const char* const name : {"C.UTF-8", "en_US.UTF-8"}) {
            if (!IsRead()) {
                locale_ = newlocale(LC_CTYPE_MASK, name, locale_t{});
            }
        }
    }
    UnicodeLetters(const UnicodeLetters&) = delete;
    UnicodeLetters& operator=(const UnicodeLetters&) = delete;
    ~UnicodeLetters() {
        if (IsRead()) {
            freelocale(locale_);
        }
    }

    [[nodiscard]] bool IsRead() const { return locale_ != locale_t{}; }

    // By simple case folding. Call only if the locale is read.
    [[nodiscard]] wchar_t Folded(wchar_t character) const {
        // These have the capital or the small letter of an "i", but fold to none.
        if (character == kCapitalIWithDot || character == kSmallDotlessI) {
            return character;
        }
        // Small letters alone would keep apart what has one capital, as the two small sigmas.
        const wint_t capital = towupper_l(static_cast<wint_t>(character), locale_);
        return static_cast<wchar_t>(towlower_l(capital, locale_));
    }

  private:
    locale_t locale_{};
};

const UnicodeLetters& Letters() {
    static const UnicodeLetters letters;
    return letters;
}

}  // namespace

std::string CaseFolded(const std::string& text) {
    if (!IsUtf8(text) || !KnowsLettersOfUnicode()) {
        return LowerCasedAscii(text);
    }
    std::wstring folded = Utf8ToWide(text);
    for (wchar_t& character : folded) {
        character = Letters().Folded(character);
    }
    return WideToUtf8(folded);
}

bool KnowsLettersOfUnicode() {
    return Letters().IsRead();
}

}  // namespace sealkeeper
