// ASCII is converted without the system's converter. The results must be the same.
#include <gtest/gtest.h>
#include <iconv.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// The text as the system's converter converts it; empty if it refuses.
template <typename Output, typename Input>
std::optional<Output> ByConverter(const char* to, const char* from, Input input) {
    const iconv_t converter = iconv_open(to, from);
    Output output(input.size() * 4, 0);
    auto* next = reinterpret_cast<char*>(input.data());
    auto* written = reinterpret_cast<char*>(output.data());
    std::size_t left = input.size() * sizeof(input[0]);
    std::size_t room = output.size() * sizeof(output[0]);
    const bool isSound = iconv(converter, &next, &left, &written, &room) != ~std::size_t{0};
    iconv_close(converter);
    output.resize(output.size() - room / sizeof(output[0]));
    return isSound ? std::optional(output) : std::nullopt;
}

void ExpectAsTheConverter(const std::string& utf8) {
    const auto wide = ByConverter<std::wstring>("UTF-32LE", "UTF-8", utf8);
    EXPECT_EQ(Utf8ToWide(utf8), wide.value_or(L"U82W_ERROR"));
}

void ExpectAsTheConverter(const std::wstring& wide) {
    const auto utf8 = ByConverter<std::string>("UTF-8", "UTF-32LE", wide);
    EXPECT_EQ(WideToUtf8(wide), utf8.value_or("W2U8_ERROR"));
    const auto utf16 = ByConverter<std::u16string>("UTF-16LE", "UTF-32LE", wide);
    EXPECT_EQ(WideToUtf16(wide), utf16.value_or(u"wchar_to_utf16 iconv ERROR "));
}

void ExpectAsTheConverter(const std::u16string& utf16) {
    const auto wide = ByConverter<std::wstring>("UTF-32LE", "UTF-16LE", utf16);
    if (wide) {
        EXPECT_EQ(Utf16ToWide(utf16), *wide);
    } else {
        EXPECT_TRUE(Utf16ToWide(utf16).starts_with(L"utf16_to_wchar iconv ERROR "));
    }
}

// The given texts with ASCII before, between and after them. Lengths vary around the word sizes in
// which ASCII may be examined.
template <typename Text>
void ExpectMixesAsTheConverter(const std::vector<Text>& texts) {
    using Unit = typename Text::value_type;
    for (const std::size_t before : std::vector<std::size_t>{0, 1, 3, 7, 8, 15, 16, 17, 33}) {
        for (const std::size_t after : std::vector<std::size_t>{0, 1, 2, 7, 8, 16, 31}) {
            for (const Text& text : texts) {
                const Text mixed = Text(before, Unit{'a'}) + text + Text(after, Unit{0x7F});
                ExpectAsTheConverter(mixed);
                for (const Text& other : texts) {
                    ExpectAsTheConverter(mixed + other);
                }
            }
        }
    }
}

TEST(TextEncodingAgainstConverter, AsciiIsConvertedAsTheSystemsConverterDoes) {
    std::string all;
    for (char character = 0; character != 0x7F; ++character) {
        all.push_back(character);
    }
    all.push_back(0x7F);
    for (std::size_t start = 0; start < all.size(); ++start) {
        for (const std::size_t length : std::vector<std::size_t>{1, 2, 9, 40, 128}) {
            const std::string some = all.substr(start, length);
            ExpectAsTheConverter(some);
            ExpectAsTheConverter(std::wstring(some.begin(), some.end()));
            ExpectAsTheConverter(std::u16string(some.begin(), some.end()));
        }
    }
}

TEST(TextEncodingAgainstConverter, MixesOfAsciiAreConvertedAsTheSystemsConverterDoes) {
    ExpectMixesAsTheConverter<std::string>({std::string(1, '\0'), "\xC2\x80", "\xC3\xA9",
                                            "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\x80", "\xC3",
                                            "\xE2\x82", "\xED\xA0\x80", "\xFF"});
    std::vector<std::wstring> wide;
    for (const std::uint32_t point :
         std::vector<std::uint32_t>{0, 0x80, 0xFF, 0x100, 0x20AC, 0x1F600, 0xD83D, 0xDE00, 0x110000,
                                    0x80000000, 0x80000041, 0xFFFFFFFF}) {
        wide.emplace_back(1, static_cast<wchar_t>(point));
    }
    ExpectMixesAsTheConverter(wide);
    ExpectMixesAsTheConverter<std::u16string>(
        {std::u16string(1, u'\0'), u"\u0080", u"\u00FF", u"\u0100", u"\u4100", u"\u20AC",
         u"\U0001F600", std::u16string(1, char16_t{0xD83D}), std::u16string(1, char16_t{0xDE00})});
}

}  // namespace
}  // namespace sealkeeper
