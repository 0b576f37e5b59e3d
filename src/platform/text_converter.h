// The system's character-set converter, as the conversions of text_encoding.h use it.
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

// An open converter. `iconv_open` marks a failure with (iconv_t)-1 and not with a null pointer, so
// an unopened one is held as null here.
using Converter = std::unique_ptr<iconv_t, ConverterCloser>;

// Null, and errno tells why, when the system has no such converter or not what it takes to open it:
// memory, descriptors.
[[nodiscard]] Converter OpenConverter(const ConverterNames& names);

// A converter of each kind, open from the construction to the end. Nobody converts by them: they
// keep loaded what the system loads for the first of a kind, so that the conversions made meanwhile
// need no descriptor and no file for theirs.
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
