// Feeds any bytes as text of each form. Every conversion must give what the system's converter
// gives for the whole text, or the error text. Converted text must convert back to the original.
#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string>

#include "fuzzer.h"
#include "platform/text_encoding.h"

namespace {

using namespace sealkeeper;
using fuzz::ByteView;

constexpr char32_t kEndOfUnicode = 0x110000;

// One direction of the system's converter, opened once.
class Converter {
  public:
    Converter(const char* to, const char* from) : converter_(iconv_open(to, from)) {
        fuzz::Require(converter_ != reinterpret_cast<iconv_t>(-1));
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() { iconv_close(converter_); }

    // Nothing, with errno set, when `input` is malformed.
    template <typename Output, typename Input>
    std::optional<Output> Convert(const Input& input) {
        using InputUnit = typename Input::value_type;
        using OutputUnit = typename Output::value_type;
        // Resets the converter.
        iconv(converter_, nullptr, nullptr, nullptr, nullptr);
        // One unit of any form takes at most four units of another.
        Output output(4 * input.size(), OutputUnit{});
        char* from = const_cast<char*>(reinterpret_cast<const char*>(input.data()));
        char* to = reinterpret_cast<char*>(output.data());
        std::size_t fromBytes = input.size() * sizeof(InputUnit);
        std::size_t toBytes = output.size() * sizeof(OutputUnit);
        if (iconv(converter_, &from, &fromBytes, &to, &toBytes) == static_cast<std::size_t>(-1)) {
            return std::nullopt;
        }
        output.resize(output.size() - toBytes / sizeof(OutputUnit));
        return output;
    }

  private:
    iconv_t converter_;
};

template <typename Text>
Text TextOf(ByteView bytes) {
    using Unit = typename Text::value_type;
    Text text(bytes.size() / sizeof(Unit), Unit{});
    // memcpy must not be called with null pointers.
    if (!text.empty()) {
        std::memcpy(text.data(), bytes.data(), text.size() * sizeof(Unit));
    }
    return text;
}

void CheckUtf8(const std::string& utf8) {
    static Converter converter("UTF-32LE", "UTF-8");
    const auto expected = converter.Convert<std::wstring>(utf8);
    const std::wstring wide = Utf8ToWide(utf8);
    fuzz::Require(wide == expected.value_or(L"U82W_ERROR"));
    fuzz::Require(!expected || WideToUtf8(wide) == utf8);
}

void CheckUtf16(const std::u16string& utf16) {
    static Converter converter("UTF-32LE", "UTF-16LE");
    const auto expected = converter.Convert<std::wstring>(utf16);
    const int error = errno;
    const std::wstring wide = Utf16ToWide(utf16);
    if (!expected) {
        fuzz::Require(wide == L"utf16_to_wchar iconv ERROR " + NarrowToWide(std::strerror(error)));
        return;
    }
    fuzz::Require(wide == *expected);
    fuzz::Require(WideToUtf16(wide) == utf16);
}

void CheckWide(const std::wstring& wide) {
    static Converter toUtf8("UTF-8", "UTF-32LE");
    static Converter toUtf16("UTF-16LE", "UTF-32LE");
    const auto expectedUtf8 = toUtf8.Convert<std::string>(wide);
    const auto expectedUtf16 = toUtf16.Convert<std::u16string>(wide);
    const std::string utf8 = WideToUtf8(wide);
    const std::u16string utf16 = WideToUtf16(wide);
    fuzz::Require(utf8 == expectedUtf8.value_or("W2U8_ERROR"));
    fuzz::Require(utf16 == expectedUtf16.value_or(u"wchar_to_utf16 iconv ERROR "));
    fuzz::Require(!expectedUtf8 || Utf8ToWide(utf8) == wide);
    fuzz::Require(!expectedUtf16 || Utf16ToWide(utf16) == wide);
}

// Reduces each unit to a code point, because most 32-bit numbers are none. Surrogates may remain.
std::wstring CodePoints(std::wstring wide) {
    std::transform(wide.begin(), wide.end(), wide.begin(), [](wchar_t unit) {
        return static_cast<wchar_t>(static_cast<char32_t>(unit) % kEndOfUnicode);
    });
    return wide;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView input(data, size);
    CheckUtf8(TextOf<std::string>(input));
    CheckUtf16(TextOf<std::u16string>(input));
    const auto wide = TextOf<std::wstring>(input);
    CheckWide(wide);
    CheckWide(CodePoints(wide));
    fuzz::Require(ConverterFailures() == 0);
    return 0;
}
