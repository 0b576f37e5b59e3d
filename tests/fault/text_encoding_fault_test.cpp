#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <string>

#include "fault/fault_injection.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CallCount;
using test::ResetCallCount;
using test::ScopedFault;

// System texts are ASCII in the "C" locale, which the program keeps.
std::wstring WideSystemText(int error) {
    const std::string text = std::strerror(error);
    return {text.begin(), text.end()};
}

TEST(TextEncodingFaults, ConverterThatCannotBeOpened) {
    const ScopedFault fault(Call::IconvOpen);
    EXPECT_EQ(WideToUtf8(L"a\u00E9"), "W2U8_ERROR");
    EXPECT_EQ(Utf8ToWide("a\xC3\xA9"), L"U82W_ERROR");
    EXPECT_EQ(Utf16ToWide(u"a\u00E9"),
              L"utf16_to_wchar iconv_open ERROR " + WideSystemText(EMFILE));
    EXPECT_EQ(WideToUtf16(L"a\u00E9"), u"wchar_to_utf16 iconv_open ERROR )");
    EXPECT_EQ(CallCount(Call::IconvOpen), 4U);
}

TEST(TextEncodingFaults, AsciiNeedsNoConverter) {
    const ScopedFault fault(Call::IconvOpen);
    EXPECT_EQ(WideToUtf8(L"a/\x7F"), "a/\x7F");
    EXPECT_EQ(Utf8ToWide("a/\x7F"), L"a/\x7F");
    EXPECT_EQ(Utf16ToWide(u"a/\x7F"), L"a/\x7F");
    EXPECT_EQ(WideToUtf16(L"a/\x7F"), u"a/\x7F");
    EXPECT_EQ(Utf8ToWide(std::string(1, '\0')), std::wstring(1, L'\0'));
    EXPECT_FALSE(fault.Struck());
}

TEST(TextEncodingFaults, TextThatCannotBeConvertedDiffersFromThat) {
    EXPECT_EQ(Utf16ToWide(u"\xD800"), L"utf16_to_wchar iconv ERROR " + WideSystemText(EINVAL));
    EXPECT_EQ(WideToUtf16(std::wstring(1, static_cast<wchar_t>(0xD800))),
              u"wchar_to_utf16 iconv ERROR ");
}

// The number of failures that the four conversions of a text record, whatever they return.
std::size_t FailuresOfConversions() {
    const std::size_t before = ConverterFailures();
    static_cast<void>(WideToUtf8(L"\u00E9"));
    static_cast<void>(Utf8ToWide("\xC3\xA9"));
    static_cast<void>(Utf16ToWide(u"\u00E9"));
    static_cast<void>(WideToUtf16(L"\u00E9"));
    return ConverterFailures() - before;
}

TEST(TextEncodingFaults, FailuresOfTheSystemAreCounted) {
    EXPECT_EQ(FailuresOfConversions(), 0U);
    {
        const ScopedFault fault(Call::IconvOpen);
        EXPECT_EQ(FailuresOfConversions(), 4U);
    }
    for (const int error : {ENOMEM, E2BIG, EBADF}) {
        const ScopedFault fault(Call::Iconv, 0, ScopedFault::Reach::Onwards, error);
        EXPECT_EQ(FailuresOfConversions(), 4U) << std::strerror(error);
    }
}

TEST(TextEncodingFaults, FaultsOfTheTextAreNot) {
    for (const int error : {EILSEQ, EINVAL}) {
        const ScopedFault fault(Call::Iconv, 0, ScopedFault::Reach::Onwards, error);
        EXPECT_EQ(FailuresOfConversions(), 0U) << std::strerror(error);
        EXPECT_EQ(CallCount(Call::Iconv), 4U);
    }
}

TEST(TextEncodingFaults, NothingOpensNoConverter) {
    ResetCallCount(Call::IconvOpen);
    EXPECT_EQ(WideToUtf8(L""), "");
    EXPECT_EQ(Utf8ToWide(""), L"");
    EXPECT_EQ(Utf16ToWide(u""), L"");
    EXPECT_EQ(WideToUtf16(L""), u"");
    EXPECT_EQ(CallCount(Call::IconvOpen), 0U);
    EXPECT_EQ(WideToUtf8(L"\u00E9"), "\xC3\xA9");
    EXPECT_EQ(CallCount(Call::IconvOpen), 1U);
}

}  // namespace
}  // namespace sealkeeper
