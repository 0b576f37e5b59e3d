// What is wrong with a name that the tool does not know.
#ifndef SEALKEEPER_INSPECT_LINT_NAME_TROUBLE_H
#define SEALKEEPER_INSPECT_LINT_NAME_TROUBLE_H

#include <string>
#include <string_view>

#include "inspect/lint/known_keys.h"

namespace sealkeeper {

struct Trouble {
    // A sentence without its end, to which is added what comes of it.
    std::string what;
    // A whole sentence.
    std::string cure;
    // Whether nobody wrote it as a name.
    bool isMisread = false;
};

// Of a file that begins with such a mark, the name of the first section does.
[[nodiscard]] bool StartsWithByteOrderMark(std::string_view text);

// The key of a word such as "version=2;"; null where it begins with no key that the tool knows.
[[nodiscard]] const KnownKey* FindKeyAtStart(std::string_view word);

// `name` stands where the name of a section is expected, and is none that the tool knows.
[[nodiscard]] Trouble SectionNameTrouble(std::string_view name);

// `name` is a key in `section`, which the tool knows, but not with that key.
[[nodiscard]] Trouble KeyNameTrouble(std::string_view section, std::string_view name);

}  // namespace sealkeeper

#endif
