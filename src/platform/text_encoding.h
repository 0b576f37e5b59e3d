// Conversions between the three forms in which text is held: UTF-8 (console, configuration, system
// calls), wide strings of 32-bit code points, and UTF-16LE (the stored form of catalogue paths).
//
// A conversion never fails towards its caller: bad text gives a fixed error text in place of the
// result, so that the bad name shows up as that text in logs and comparisons. An empty input gives
// an empty result. Text of ASCII characters alone is converted without the system's converter; any
// other gives an error text also when the system fails to convert, which `ConverterWatch` tells.
#ifndef SEALKEEPER_PLATFORM_TEXT_ENCODING_H
#define SEALKEEPER_PLATFORM_TEXT_ENCODING_H

#include <cstddef>
#include <string>

namespace sealkeeper {

// How many conversions of this process so far gave an error text, whatever the text was, because
// the system's converter could not be opened, for want of descriptors, of memory or of its modules,
// or failed for another reason than the text. Not for use by several threads at a time.
[[nodiscard]] std::size_t ConverterFailures();

// "W2U8_ERROR" for a code point that Unicode does not have or that belongs to the surrogate range.
[[nodiscard]] std::string WideToUtf8(const std::wstring& wide);

// L"U82W_ERROR" for bytes that are not well-formed UTF-8.
[[nodiscard]] std::wstring Utf8ToWide(const std::string& utf8);

// L"utf16_to_wchar iconv ERROR " followed by the system's error text for an unpaired surrogate.
[[nodiscard]] std::wstring Utf16ToWide(const std::u16string& utf16);

// u"wchar_to_utf16 iconv ERROR " for what `WideToUtf8` rejects.
[[nodiscard]] std::u16string WideToUtf16(const std::wstring& wide);

// The multibyte-to-wide conversion of the current locale; serves to widen the system's error texts.
// Text that the locale cannot convert gives an empty result.
[[nodiscard]] std::wstring NarrowToWide(const std::string& narrow);

}  // namespace sealkeeper

#endif
