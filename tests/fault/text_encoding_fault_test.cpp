#include <gtest/gtest.h>

#include <cerrno>
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

// The system's text is ASCII in the "C" locale that the program stays in.
std::wstring WideSystemText(int error) {
    const std::string text = std::strerror(error);
    return {text.begin(), text.end()};
}

TEST(TextEncodingFaults, ConverterThatCannotBeOpened) {
    const ScopedFault fault(Call::IconvOpen);
    EXPECT_EQ(WideToUtf8(L"a"), "W2U8_ERROR");
    EXPECT_EQ(Utf8ToWide("a"), L"U82W_ERROR");
    EXPECT_EQ(Utf16ToWide(u"a"), L"utf16_to_wchar iconv_open ERROR " + WideSystemText(EMFILE));
    EXPECT_EQ(WideToUtf16(L"a"), u"wchar_to_utf16 iconv_open ERROR )");
    EXPECT_EQ(CallCount(Call::IconvOpen), 4U);
}

TEST(TextEncodingFaults, TextThatCannotBeConvertedDiffersFromThat) {
    EXPECT_EQ(Utf16ToWide(u"\xD800"), L"utf16_to_wchar iconv ERROR " + WideSystemText(EINVAL));
    EXPECT_EQ(WideToUtf16(std::wstring(1, static_cast<wchar_t>(0xD800))),
              u"wchar_to_utf16 iconv ERROR ");
}

TEST(TextEncodingFaults, NothingOpensNoConverter) {
    ResetCallCount(Call::IconvOpen);
    EXPECT_EQ(WideToUtf8(L""), "");
    EXPECT_EQ(Utf8ToWide(""), L"");
    EXPECT_EQ(Utf16ToWide(u""), L"");
    EXPECT_EQ(WideToUtf16(L""), u"");
    EXPECT_EQ(CallCount(Call::IconvOpen), 0U);
    EXPECT_EQ(WideToUtf8(L"a"), "a");
    EXPECT_EQ(CallCount(Call::IconvOpen), 1U);
}

}  // namespace
}  // namespace sealkeeper
