#include "platform/text_encoding.h"

#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <utility>

#include "platform/text_converter.h"

namespace sealkeeper {
namespace {

// The converter sees wide strings as "UTF-32LE" and 16-bit strings as "UTF-16LE".
static_assert(sizeof(wchar_t) == 4 && std::endian::native == std::endian::little);

// No conversion gives more bytes than this for each input unit.
constexpr std::size_t kMaxOutputBytesPerUnit = 4;

enum class ConversionFailure { None, Open, Convert };

struct ConversionOutcome {
    ConversionFailure failure = ConversionFailure::None;
    // errno of the failed call, saved before anything is closed.
    int systemError = 0;
};

std::size_t g_systemFailures = 0;

// Whether `iconv` failed because the input is malformed or incomplete (POSIX).
bool IsFaultOfText(int error) {
    return error == EILSEQ || error == EINVAL;
}

// Whether all units are ASCII characters, NUL included. Every encoding here stores such a character
// as one unit of the same value.
template <typename Input>
bool IsAscii(const Input& input) {
    using Unit = std::make_unsigned_t<typename Input::value_type>;
    constexpr Unit kAsciiBits = 0x7F;
    // No early exit, so that the compiler can vectorise the loop.
    Unit bits = 0;
    for (const auto unit : input) {
        bits = static_cast<Unit>(bits | static_cast<Unit>(unit));
    }
    return bits <= kAsciiBits;
}

// Converts all of `input` into `output`, which is empty after a failure. ASCII text is copied unit
// by unit; other text takes one call of the system's converter.
template <typename Output, typename Input>
ConversionOutcome Convert(const ConverterNames& names, const Input& input, Output& output) {
    using OutputUnit = typename Output::value_type;
    using InputUnit = typename Input::value_type;

    output.clear();
    if (input.empty()) {
        return {};
    }
    if (IsAscii(input)) {
        // Not `assign`: with units of another type, libstdc++ makes a temporary string first.
        output = Output(input.begin(), input.end());
        return {};
    }
    const Converter converter = OpenConverter(names);
    if (!converter) {
        ++g_systemFailures;
        return {ConversionFailure::Open, errno};
    }

    Output buffer(input.size() * kMaxOutputBytesPerUnit / sizeof(OutputUnit), OutputUnit{});
    const std::size_t bufferBytes = buffer.size() * sizeof(OutputUnit);
    // iconv takes the input as char** and does not write through it.
    char* inputPosition = const_cast<char*>(reinterpret_cast<const char*>(input.data()));  // NOLINT
    char* outputPosition = reinterpret_cast<char*>(buffer.data());                         // NOLINT
    std::size_t inputBytesLeft = input.size() * sizeof(InputUnit);
    std::size_t outputBytesLeft = bufferBytes;
    const std::size_t converted =
        iconv(converter.get(), &inputPosition, &inputBytesLeft, &outputPosition, &outputBytesLeft);
    if (converted == static_cast<std::size_t>(-1)) {
        const int error = errno;
        if (!IsFaultOfText(error)) {
            ++g_systemFailures;
        }
        return {ConversionFailure::Convert, error};
    }
    buffer.resize((bufferBytes - outputBytesLeft) / sizeof(OutputUnit));
    output = std::move(buffer);
    return {};
}

}  // namespace

std::size_t ConverterFailures() {
    return g_systemFailures;
}

std::string WideToUtf8(const std::wstring& wide) {
    std::string utf8;
    if (Convert(kWideToUtf8, wide, utf8).failure != ConversionFailure::None) {
        return "W2U8_ERROR";
    }
    return utf8;
}

std::wstring Utf8ToWide(const std::string& utf8) {
    std::wstring wide;
    if (Convert(kUtf8ToWide, utf8, wide).failure != ConversionFailure::None) {
        return L"U82W_ERROR";
    }
    return wide;
}

std::wstring Utf16ToWide(const std::u16string& utf16) {
    std::wstring wide;
    const ConversionOutcome outcome = Convert(kUtf16ToWide, utf16, wide);
    switch (outcome.failure) {
        case ConversionFailure::Open:
            return L"utf16_to_wchar iconv_open ERROR " +
                   NarrowToWide(std::strerror(outcome.systemError));
        case ConversionFailure::Convert:
            return L"utf16_to_wchar iconv ERROR " +
                   NarrowToWide(std::strerror(outcome.systemError));
        case ConversionFailure::None:
            break;
    }
    return wide;
}

std::u16string WideToUtf16(const std::wstring& wide) {
    std::u16string utf16;
    switch (Convert(kWideToUtf16, wide, utf16).failure) {
        case ConversionFailure::Open:
            // The unmatched parenthesis is part of the text.
            return u"wchar_to_utf16 iconv_open ERROR )";
        case ConversionFailure::Convert:
            return u"wchar_to_utf16 iconv ERROR ";
        case ConversionFailure::None:
            break;
    }
    return utf16;
}

std::wstring NarrowToWide(const std::string& narrow) {
    if (narrow.empty()) {
        return {};
    }
    std::wstring buffer(narrow.size() + 1, L'\0');
    const std::size_t converted = std::mbstowcs(buffer.data(), narrow.c_str(), buffer.size());
    if (converted == static_cast<std::size_t>(-1)) {
        return {};
    }
    buffer.resize(converted);
    return buffer;
}

}  // namespace sealkeeper
