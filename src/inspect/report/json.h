// Reports as JSON (RFC 8259).
#ifndef SEALKEEPER_INSPECT_REPORT_JSON_H
#define SEALKEEPER_INSPECT_REPORT_JSON_H

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// Members keep the order in which they were added. Documents begin as Json::object() or
// Json::array(): where memory fails while a null document becomes one, the library crashes later.
using Json = nlohmann::ordered_json;

// `document` as indented text, with a final line feed. Bytes that are not UTF-8, as file names may
// hold, become U+FFFD.
[[nodiscard]] std::string JsonText(const Json& document);

// Adds the file name `fileName` as member `name`. If it is not UTF-8, its bytes follow in a member
// `name` + "Hex".
void AddFileName(Json& object, const std::string& name, const std::string& fileName);

// Adds `failure`, why there is no report, and `status`, the exit status, to an object that says
// what was to be looked at.
void AddFailure(Json& object, const std::string& failure, int status);

// Adds `code`, the number of a result code, and `result`, its name.
void AddCode(Json& object, ResultCode code);

}  // namespace sealkeeper

#endif
