// Reads the path field of a catalogue record, whatever it holds.
#ifndef SEALKEEPER_INSPECT_SHOW_STORED_PATH_H
#define SEALKEEPER_INSPECT_SHOW_STORED_PATH_H

#include <cstdint>
#include <span>
#include <string>

#include "catalogue/catalogue_format.h"

namespace sealkeeper {

struct StoredPath {
    enum class Form {
        // UTF-16 up to the first zero unit, or to the end of the field.
        Plain,
        // UTF-32LE, as aliased paths are stored. Recognised only if it has two characters or more
        // and not all of them are above U+FFFF; otherwise it looks plain.
        Aliased,
        // Plain, with nonzero bytes after the terminating zero.
        BytesPastEnd,
    };

    Form form = Form::Plain;
    // The whole path in UTF-8. An unpaired surrogate is written as "\ud800".
    std::string spelt;
    // What a UTF-16 reader sees. It differs from `spelt` only for an alias.
    std::string seen;
    bool hasLoneSurrogate = false;
    bool fillsField = false;
    // The index of the first unit after the last '/' in the field; 0 if there is none.
    std::uint32_t namePosition = 0;
};

// Uses the conversions of platform/text_encoding.h. A `ConverterWatch` reports their failures.
[[nodiscard]] StoredPath ReadStoredPath(
    std::span<const std::uint8_t, entry_record::kPathBytes> field);

}  // namespace sealkeeper

#endif
