// The system's character-set converter (POSIX iconv), for the conversions of text_encoding.h.
#ifndef SEALKEEPER_PLATFORM_TEXT_CONVERTER_H
#define SEALKEEPER_PLATFORM_TEXT_CONVERTER_H

#include <iconv.h>

#include <algorithm>
#include <array>
#include <memory>

namespace sealkeeper {

struct ConverterNames {
    const char* to;
    const char* from;
};

inline constexpr ConverterNames kWideToUtf8{"UTF-8", "UTF-32LE"};
inline constexpr ConverterNames kUtf8ToWide{"UTF-32LE", "UTF-8"};
inline constexpr ConverterNames kUtf16ToWide{"UTF-32LE", "UTF-16LE"};
inline constexpr ConverterNames kWideToUtf16{"UTF-16LE", "UTF-32LE"};

struct ConverterCloser {
    using pointer = iconv_t;
    void operator()(iconv_t converter) const { iconv_close(converter); }
};

// Owner of an open converter. Null stands for none, although `iconv_open` reports failure as
// (iconv_t)-1.
using Converter = std::unique_ptr<iconv_t, ConverterCloser>;

// Null, with errno set, when the system has no such converter or lacks the memory or descriptors to
// open it.
[[nodiscard]] Converter OpenConverter(const ConverterNames& names);

// Holds one converter of each kind open for its lifetime. They are not used to convert: they keep
// loaded what the system loads for the first converter of a kind, so that conversions meanwhile
// need no file and no descriptor.
class HeldConverters {
  public:
    // Whether each could be opened.
    [[nodiscard]] bool AreComplete() const {
        return std::all_of(converters_.begin(), converters_.end(),
                           [](const Converter& converter) { return converter != nullptr; });
    }

  private:
    std::array<Converter, 4> converters_{OpenConverter(kWideToUtf8), OpenConverter(kUtf8ToWide),
                                         OpenConverter(kUtf16ToWide), OpenConverter(kWideToUtf16)};
};

}  // namespace sealkeeper

#endif
