#include "platform/text_encoding.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <clocale>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace sealkeeper {
namespace {

// The encodings by definition of the Unicode Standard, to compare with the system's converter.
void AppendUtf8(std::uint32_t point, std::string& utf8) {
    const auto append = [&utf8](std::uint32_t byte) { utf8.push_back(static_cast<char>(byte)); };
    if (point < 0x80) {
        append(point);
    } else if (point < 0x800) {
        append(0xC0 | (point >> 6));
        append(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        append(0xE0 | (point >> 12));
        append(0x80 | ((point >> 6) & 0x3F));
        append(0x80 | (point & 0x3F));
    } else {
        append(0xF0 | (point >> 18));
        append(0x80 | ((point >> 12) & 0x3F));
        append(0x80 | ((point >> 6) & 0x3F));
        append(0x80 | (point & 0x3F));
    }
}

void AppendUtf16(std::uint32_t point, std::u16string& utf16) {
    if (point < 0x10000) {
        utf16.push_back(static_cast<char16_t>(point));
        return;
    }
    utf16.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
    utf16.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
}

void ExpectConverts(const std::vector<std::uint32_t>& points) {
    std::string utf8;
    std::wstring wide;
    std::u16string utf16;
    for (const std::uint32_t point : points) {
        AppendUtf8(point, utf8);
        wide.push_back(static_cast<wchar_t>(point));
        AppendUtf16(point, utf16);
    }
    const std::uint32_t first = points.front();
    // Not EXPECT_EQ, which would print texts of a million characters.
    EXPECT_TRUE(Utf8ToWide(utf8) == wide) << first;
    EXPECT_TRUE(WideToUtf16(wide) == utf16) << first;
    EXPECT_TRUE(Utf16ToWide(utf16) == wide) << first;
    EXPECT_TRUE(WideToUtf8(wide) == utf8) << first;
}

constexpr std::uint32_t kFirstSurrogate = 0xD800;
constexpr std::uint32_t kLastSurrogate = 0xDFFF;
constexpr std::uint32_t kLastPoint = 0x10FFFF;

TEST(TextEncoding, EmptyTextStaysEmpty) {
    EXPECT_EQ(WideToUtf8(L""), "");
    EXPECT_EQ(Utf8ToWide(""), L"");
    EXPECT_EQ(Utf16ToWide(u""), L"");
    EXPECT_EQ(WideToUtf16(L""), u"");
    EXPECT_EQ(NarrowToWide(""), L"");
}

TEST(TextEncoding, EachAsciiCharacterByItself) {
    for (std::uint32_t point = 0; point < 0x80; ++point) {
        ExpectConverts({point});
        ExpectConverts({'a', point, 'b'});
    }
}

TEST(TextEncoding, CharactersAtTheEdgesOfTheirEncodedLength) {
    const std::vector<std::uint32_t> points = {0x00,   0x7F,   0x80,   0x7FF,  0x800,   0xD7FF,
                                               0xE000, 0xFFFD, 0xFFFE, 0xFFFF, 0x10000, kLastPoint};
    for (const std::uint32_t first : points) {
        ExpectConverts({first});
        for (const std::uint32_t second : points) {
            ExpectConverts({first, second});
            ExpectConverts({first, 'x', second, first});
        }
    }
}

TEST(TextEncoding, EveryCharacterOfUnicodeInOneText) {
    std::vector<std::uint32_t> points;
    for (std::uint32_t point = 0; point <= kLastPoint; ++point) {
        if (point < kFirstSurrogate || point > kLastSurrogate) {
            points.push_back(point);
        }
    }
    ExpectConverts(points);
}

TEST(TextEncoding, LongestOutputForEachInput) {
    ExpectConverts(std::vector<std::uint32_t>(10'000, kLastPoint));
    ExpectConverts(std::vector<std::uint32_t>(10'000, 0xFFFF));
    ExpectConverts(std::vector<std::uint32_t>(10'000, 'a'));
}

TEST(TextEncoding, KnownEncodings) {
    EXPECT_EQ(WideToUtf8(L"a\u00E9\u20AC\U0001F600"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(Utf8ToWide("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), L"a\u00E9\u20AC\U0001F600");
    EXPECT_EQ(WideToUtf16(L"\U0001F600"), (std::u16string{char16_t{0xD83D}, char16_t{0xDE00}}));
    EXPECT_EQ(Utf16ToWide(std::u16string{char16_t{0xD83D}, char16_t{0xDE00}}), L"\U0001F600");
}

TEST(TextEncoding, RoundTripThroughAllForms) {
    const std::string path("./Inhalt/\xC3\x84\xE6\x97\xA5\xF0\x9F\x98\x80\0.bin", 23);
    EXPECT_EQ(WideToUtf8(Utf16ToWide(WideToUtf16(Utf8ToWide(path)))), path);
}

struct BadUtf8 {
    const char* name;
    std::string bytes;
};

const std::vector<BadUtf8>& BadUtf8Texts() {
    static const std::vector<BadUtf8> texts = {
        {"lone continuation, first", "\x80"},
        {"lone continuation, last", "\xBF"},
        {"lead byte of two, alone", "\xC3"},
        {"lead byte of three, alone", "\xE2"},
        {"two bytes of three", "\xE2\x82"},
        {"lead byte of four, alone", "\xF0"},
        {"two bytes of four", "\xF0\x9F"},
        {"three bytes of four", "\xF0\x9F\x98"},
        {"lead byte before a letter",
         "\xC3"
         "a"},
        {"two bytes of three before a letter",
         "\xE2\x82"
         "a"},
        {"three bytes of four before a letter",
         "\xF0\x9F\x98"
         "a"},
        {"two lead bytes", "\xC3\xC3\xA9"},
        {"overlong NUL", "\xC0\x80"},
        {"overlong slash of two", "\xC0\xAF"},
        {"overlong of two, last", "\xC1\xBF"},
        {"overlong slash of three", "\xE0\x80\xAF"},
        {"overlong of three, last", "\xE0\x9F\xBF"},
        {"overlong slash of four", "\xF0\x80\x80\xAF"},
        {"overlong of four, last", "\xF0\x8F\xBF\xBF"},
        {"first surrogate", "\xED\xA0\x80"},
        {"last surrogate", "\xED\xBF\xBF"},
        {"pair of surrogates", "\xED\xA0\xBD\xED\xB8\x80"},
        {"first beyond Unicode", "\xF4\x90\x80\x80"},
        {"lead byte F5", "\xF5\x80\x80\x80"},
        {"five bytes", "\xF8\x88\x80\x80\x80"},
        {"six bytes", "\xFC\x84\x80\x80\x80\x80"},
        {"FE", "\xFE"},
        {"FF", "\xFF"},
        {"Latin-1", "caf\xE9"},
    };
    return texts;
}

TEST(TextEncoding, BadUtf8GivesTheErrorText) {
    for (const BadUtf8& bad : BadUtf8Texts()) {
        EXPECT_EQ(Utf8ToWide(bad.bytes), L"U82W_ERROR") << bad.name;
        EXPECT_EQ(Utf8ToWide("good " + bad.bytes), L"U82W_ERROR") << bad.name;
        EXPECT_EQ(Utf8ToWide("good\xE2\x82\xAC" + bad.bytes + " good"), L"U82W_ERROR") << bad.name;
    }
}

const std::vector<std::uint32_t>& PointsThatAreNone() {
    static const std::vector<std::uint32_t> points = {kFirstSurrogate, 0xDBFF,         0xDC00,
                                                      kLastSurrogate,  kLastPoint + 1, 0x7FFFFFFF,
                                                      0x80000000,      0xFFFFFFFF};
    return points;
}

TEST(TextEncoding, BadWideTextGivesTheErrorTexts) {
    for (const std::uint32_t point : PointsThatAreNone()) {
        const auto character = static_cast<wchar_t>(point);
        for (const std::wstring& wide : {std::wstring{character}, std::wstring{L'a', character},
                                         std::wstring{character, L'a'}}) {
            EXPECT_EQ(WideToUtf8(wide), "W2U8_ERROR") << point;
            EXPECT_EQ(WideToUtf16(wide), u"wchar_to_utf16 iconv ERROR ") << point;
        }
    }
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(WideToUtf8(pair), "W2U8_ERROR");
    EXPECT_EQ(WideToUtf16(pair), u"wchar_to_utf16 iconv ERROR ");
}

// The error text, followed by the system's description of `error`.
std::wstring Utf16Error(int error) {
    const std::string description = std::strerror(error);
    return L"utf16_to_wchar iconv ERROR " + std::wstring(description.begin(), description.end());
}

TEST(TextEncoding, UnpairedSurrogatesGiveTheErrorTextAndTheSystemsDescription) {
    constexpr char16_t kHigh = 0xD83D;
    constexpr char16_t kLow = 0xDE00;
    // POSIX iconv: EINVAL for a sequence cut off at the end of the input, EILSEQ for an invalid
    // one.
    EXPECT_EQ(Utf16ToWide(std::u16string{kHigh}), Utf16Error(EINVAL));
    EXPECT_EQ(Utf16ToWide(std::u16string{u'a', kHigh}), Utf16Error(EINVAL));
    EXPECT_EQ(Utf16ToWide(std::u16string{kHigh, kLow, kHigh}), Utf16Error(EINVAL));
    EXPECT_EQ(Utf16ToWide(std::u16string{kLow}), Utf16Error(EILSEQ));
    EXPECT_EQ(Utf16ToWide(std::u16string{kLow, kHigh}), Utf16Error(EILSEQ));
    EXPECT_EQ(Utf16ToWide(std::u16string{kHigh, u'a'}), Utf16Error(EILSEQ));
    EXPECT_EQ(Utf16ToWide(std::u16string{kHigh, kHigh, kLow}), Utf16Error(EILSEQ));
    EXPECT_EQ(Utf16ToWide(std::u16string{u'a', kLow, u'b'}), Utf16Error(EILSEQ));
}

TEST(TextEncoding, NoStateIsKeptBetweenCalls) {
    EXPECT_EQ(Utf8ToWide("\xE2\x82"), L"U82W_ERROR");
    EXPECT_EQ(Utf8ToWide("\xAC"), L"U82W_ERROR");
    EXPECT_EQ(Utf8ToWide("a"), L"a");
    EXPECT_EQ(WideToUtf8(L"a"), "a");
}

TEST(TextEncoding, NarrowTextThatTheLocaleCannotConvertIsNothing) {
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) {
        GTEST_SKIP() << "the system has no locale C.UTF-8";
    }
    const std::wstring converted = NarrowToWide("\xC3\xA9");
    const std::wstring notConverted = NarrowToWide("a\xFF");
    // The locale that the program runs in.
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(converted, L"\u00E9");
    EXPECT_EQ(notConverted, L"");
}

TEST(TextEncoding, NarrowTextIsWidenedToItsTerminatingZero) {
    EXPECT_EQ(NarrowToWide("Invalid argument"), L"Invalid argument");
    EXPECT_EQ(NarrowToWide("a"), L"a");
    EXPECT_EQ(NarrowToWide(std::string("ab\0cd", 5)), L"ab");
    EXPECT_EQ(NarrowToWide(std::string("\0cd", 3)), L"");
    EXPECT_EQ(NarrowToWide(std::string(10'000, 'x')), std::wstring(10'000, L'x'));
}

}  // namespace
}  // namespace sealkeeper
