// Explains why a catalogue could not be read.
#ifndef SEALKEEPER_INSPECT_CHECK_CATALOGUE_FAILURE_H
#define SEALKEEPER_INSPECT_CHECK_CATALOGUE_FAILURE_H

#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// A failed attempt to read a catalogue.
struct CatalogueFailure {
    ResultCode code = ResultCode::Ok;
    // Relative to the game directory, which is the current directory.
    std::string path;
    // Where it is not, `path` has another text in its place.
    bool isNameUtf8 = true;
    std::string productId;
    // The error logged where the failure was found; empty if there was none.
    std::string loggedCause;
};

// "'Quorvane/Certificates/mod.bin': 9 (FileInvalid): it is damaged or cut off, or no catalogue".
[[nodiscard]] std::string CatalogueFailureText(const CatalogueFailure& failure);

}  // namespace sealkeeper

#endif
