#include "inspect/lint/wrong_quotes.h"

#include <algorithm>
#include <array>

namespace sealkeeper {
namespace {

// The ASCII apostrophe and backtick, and in UTF-8 U+2018 to U+201F, U+00AB and U+00BB.
constexpr std::array<std::string_view, 12> kWrongQuotes = {"'",
                                                           "`",
                                                           "\xE2\x80\x98",
                                                           "\xE2\x80\x99",
                                                           "\xE2\x80\x9A",
                                                           "\xE2\x80\x9B",
                                                           "\xE2\x80\x9C",
                                                           "\xE2\x80\x9D",
                                                           "\xE2\x80\x9E",
                                                           "\xE2\x80\x9F",
                                                           "\xC2\xAB",
                                                           "\xC2\xBB"};

}  // namespace

bool StartsWithWrongQuote(std::string_view text) {
    return std::any_of(kWrongQuotes.begin(), kWrongQuotes.end(),
                       [text](std::string_view quote) { return text.starts_with(quote); });
}

}  // namespace sealkeeper
