// Classifies how the name in a certificate differs from the given product id.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_NAME_DIFFERENCE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_NAME_DIFFERENCE_H

#include <string>

namespace sealkeeper {

enum class NameDifference {
    None,
    // Only ASCII letter case differs. The library treats such names as equal.
    LetterCase,
    // ASCII white space differs anywhere in the name, and perhaps letter case too.
    WhiteSpace,
    // Characters outside ASCII differ too. The library compares their bytes, so letter case counts
    // there, and so does the form of an accent. A plain letter with a combining accent is `Other`,
    // since the letter itself is ASCII.
    OutsideAscii,
    Other,
};

[[nodiscard]] NameDifference DifferenceOf(const std::string& left, const std::string& right);

}  // namespace sealkeeper

#endif
