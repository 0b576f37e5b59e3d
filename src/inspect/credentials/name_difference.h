// How the name in a certificate differs from the product id that was given.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_NAME_DIFFERENCE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_NAME_DIFFERENCE_H

#include <string>

namespace sealkeeper {

enum class NameDifference {
    None,
    // Letters of ASCII in another case. The library takes such names for the same.
    LetterCase,
    // ASCII white space, wherever it stands, and perhaps letter case too.
    WhiteSpace,
    // Characters outside ASCII too, of which the library compares the bytes: letter case counts
    // there, and so does the form, as of an accent that is part of its letter or stands after it.
    OutsideAscii,
    Other,
};

[[nodiscard]] NameDifference DifferenceOf(const std::string& left, const std::string& right);

}  // namespace sealkeeper

#endif
