// Explains what is wrong with an unknown name.
#ifndef SEALKEEPER_INSPECT_LINT_NAME_TROUBLE_H
#define SEALKEEPER_INSPECT_LINT_NAME_TROUBLE_H

#include <string>
#include <string_view>

#include "inspect/lint/known_keys.h"

namespace sealkeeper {

struct Trouble {
    // The beginning of a sentence. The caller adds the consequence.
    std::string what;
    // A full sentence.
    std::string cure;
    // Whether it is text that was not written as a name.
    bool isMisread = false;
};

// In a file with a byte-order mark, the first section's name begins with it.
[[nodiscard]] bool StartsWithByteOrderMark(std::string_view text);

// The known key at the start of a word such as "version=2;"; null if there is none.
[[nodiscard]] const KnownKey* FindKeyAtStart(std::string_view word);

// For an unknown `name` in the place of a section's.
[[nodiscard]] Trouble SectionNameTrouble(std::string_view name);

// For a `name` that is no key of the known `section`.
[[nodiscard]] Trouble KeyNameTrouble(std::string_view section, std::string_view name);

}  // namespace sealkeeper

#endif
