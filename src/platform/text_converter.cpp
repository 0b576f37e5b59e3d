#include "platform/text_converter.h"

namespace sealkeeper {

Converter OpenConverter(const ConverterNames& names) {
    const iconv_t opened = iconv_open(names.to, names.from);
    // POSIX reports failure as (iconv_t)-1.
    const auto failed = reinterpret_cast<iconv_t>(-1);  // NOLINT
    return Converter(opened == failed ? nullptr : opened);
}

}  // namespace sealkeeper
