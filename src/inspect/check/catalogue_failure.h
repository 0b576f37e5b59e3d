// Why a catalogue was not read, in words.
#ifndef SEALKEEPER_INSPECT_CHECK_CATALOGUE_FAILURE_H
#define SEALKEEPER_INSPECT_CHECK_CATALOGUE_FAILURE_H

#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// What the result code of reading a catalogue was made from.
struct CatalogueFailure {
    ResultCode code = ResultCode::Ok;
    // From the game directory, which is the current one.
    std::string path;
    std::string productId;
    // What was logged where the failure was found; empty when nothing was.
    std::string loggedCause;
};

// "'Quorvane/Certificates/mod.bin': it is damaged or cut off, or no catalogue (9 FileInvalid)".
[[nodiscard]] std::string CatalogueFailureText(const CatalogueFailure& failure);

}  // namespace sealkeeper

#endif
