// The path in a record of a catalogue, whatever was put into its field.
#ifndef SEALKEEPER_INSPECT_SHOW_STORED_PATH_H
#define SEALKEEPER_INSPECT_SHOW_STORED_PATH_H

#include <cstdint>
#include <span>
#include <string>

#include "catalogue/catalogue_format.h"

namespace sealkeeper {

struct StoredPath {
    enum class Form {
        // UTF-16 up to its first zero unit, or to the end of the field.
        Plain,
        // Four bytes a character, as an alias is stored. One of a single character looks plain, and
        // so does one whose characters are all above U+FFFF.
        Aliased,
        // Plain, with other bytes than zeros past its end.
        BytesPastEnd,
    };

    Form form = Form::Plain;
    // What is spelt, in UTF-8. A surrogate without a partner is written as "\ud800".
    std::string spelt;
    // What a reader of UTF-16 sees of it: the same, but for an alias.
    std::string seen;
    bool hasLoneSurrogate = false;
    bool fillsField = false;
    // The index of the first unit after the last '/' of the field, 0 when there is none.
    std::uint32_t namePosition = 0;
};

// Uses the conversions of platform/text_encoding.h: what they fail to convert, `ConverterWatch`
// tells.
[[nodiscard]] StoredPath ReadStoredPath(
    std::span<const std::uint8_t, entry_record::kPathBytes> field);

}  // namespace sealkeeper

#endif
