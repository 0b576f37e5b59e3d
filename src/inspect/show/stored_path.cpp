#include "inspect/show/stored_path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

#include "catalogue/catalogue_entry.h"
#include "platform/little_endian.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

bool IsHighSurrogate(char16_t unit) {
    return (unit & 0xFC00U) == 0xD800U;
}

bool IsLowSurrogate(char16_t unit) {
    return (unit & 0xFC00U) == 0xDC00U;
}

bool IsSurrogate(char32_t codePoint) {
    return 0xD800U <= codePoint && codePoint <= 0xDFFFU;
}

constexpr char32_t kLastCodePoint = 0x10FFFF;

PathField UnitsOf(std::span<const std::uint8_t> field) {
    PathField units;
    for (std::size_t i = 0; i < units.size(); ++i) {
        units[i] = static_cast<char16_t>(
            LoadLittleEndian<std::uint16_t>(field.subspan(i * sizeof(char16_t))));
    }
    return units;
}

std::wstring EscapeOf(char16_t surrogate) {
    std::array<char, 8> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "\\u%04x", static_cast<unsigned>(surrogate));
    return {text.data(), text.data() + length};
}

struct Decoded {
    std::wstring text;
    bool hasLoneSurrogate = false;
};

// Not by the system's converter, which stops at an unpaired surrogate.
Decoded DecodeUtf16(std::u16string_view units) {
    constexpr char32_t kFirstOfPairs = 0x10000;
    Decoded decoded;
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (IsHighSurrogate(units[i]) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
            const char32_t codePoint =
                kFirstOfPairs + ((units[i] & 0x3FFU) << 10U) + (units[i + 1] & 0x3FFU);
            decoded.text += static_cast<wchar_t>(codePoint);
            ++i;
        } else if (IsSurrogate(units[i])) {
            decoded.text += EscapeOf(units[i]);
            decoded.hasLoneSurrogate = true;
        } else {
            decoded.text += static_cast<wchar_t>(units[i]);
        }
    }
    return decoded;
}

// Reads the field as UTF-32LE up to its zero padding. Empty if it is not such text.
std::optional<std::wstring> DecodeFourByteCharacters(std::span<const std::uint8_t> field) {
    std::wstring text;
    bool hasEnded = false;
    for (std::size_t i = 0; i < field.size(); i += sizeof(char32_t)) {
        const char32_t codePoint = LoadLittleEndian<std::uint32_t>(field.subspan(i));
        hasEnded = hasEnded || codePoint == 0;
        if (!hasEnded) {
            text += static_cast<wchar_t>(codePoint);
        }
        if ((hasEnded && codePoint != 0) || IsSurrogate(codePoint) || codePoint > kLastCodePoint) {
            return std::nullopt;
        }
    }
    return text;
}

}  // namespace

StoredPath ReadStoredPath(std::span<const std::uint8_t, entry_record::kPathBytes> field) {
    const PathField units = UnitsOf(field);
    const auto end = std::find(units.begin(), units.end(), u'\0');
    const Decoded seen = DecodeUtf16({units.begin(), end});
    StoredPath path;
    path.seen = WideToUtf8(seen.text);
    path.spelt = path.seen;
    path.hasLoneSurrogate = seen.hasLoneSurrogate;
    path.fillsField = end == units.end();
    path.namePosition = NamePositionOf(units);
    if (std::all_of(end, units.end(), [](char16_t unit) { return unit == u'\0'; })) {
        return path;
    }
    const auto aliased = DecodeFourByteCharacters(field);
    path.form = aliased ? StoredPath::Form::Aliased : StoredPath::Form::BytesPastEnd;
    if (aliased) {
        path.spelt = WideToUtf8(*aliased);
    }
    return path;
}

}  // namespace sealkeeper
