// Conversions between the three forms of text: UTF-8 (console, configuration, system calls), wide
// strings of 32-bit code points, and UTF-16LE (the stored form of catalogue paths).
//
// A conversion never reports failure: malformed text gives a fixed error text as the result, so
// that the bad name appears as that text in logs and comparisons. An empty input gives an empty
// result. Pure ASCII is converted without the system's converter. Other text also gives the error
// text when the system fails to convert, which `ConverterWatch` detects.
#ifndef SEALKEEPER_PLATFORM_TEXT_ENCODING_H
#define SEALKEEPER_PLATFORM_TEXT_ENCODING_H

#include <cstddef>
#include <string>

namespace sealkeeper {

// How many conversions of this process so far gave an error text because the system failed, not the
// text: the converter could not be opened (no descriptor, memory or converter module), or failed
// for a reason other than its input. Not thread-safe.
[[nodiscard]] std::size_t ConverterFailures();

// "W2U8_ERROR" for a value above U+10FFFF or in the surrogate range.
[[nodiscard]] std::string WideToUtf8(const std::wstring& wide);

// L"U82W_ERROR" for bytes that are not well-formed UTF-8.
[[nodiscard]] std::wstring Utf8ToWide(const std::string& utf8);

// L"utf16_to_wchar iconv ERROR " followed by the system's error text for an unpaired surrogate.
[[nodiscard]] std::wstring Utf16ToWide(const std::u16string& utf16);

// u"wchar_to_utf16 iconv ERROR " for what `WideToUtf8` rejects.
[[nodiscard]] std::u16string WideToUtf16(const std::wstring& wide);

// The multibyte-to-wide conversion of the current locale, for the error texts of the system. Text
// that the locale cannot convert gives an empty result.
[[nodiscard]] std::wstring NarrowToWide(const std::string& narrow);

}  // namespace sealkeeper

#endif
