// Reports as JSON (RFC 8259).
#ifndef SEALKEEPER_INSPECT_REPORT_JSON_H
#define SEALKEEPER_INSPECT_REPORT_JSON_H

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace sealkeeper {

// Keeps the order in which members were added.
using Json = nlohmann::ordered_json;

// `document` as indented text that ends in a line feed. What is no UTF-8 in it, as a file's name
// may be, becomes U+FFFD.
[[nodiscard]] std::string JsonText(const Json& document);

// Adds the member `name` with the name of a file. Where that is no UTF-8, a further member, called
// `name` and "Hex", has its bytes.
void AddFileName(Json& object, const std::string& name, const std::string& fileName);

}  // namespace sealkeeper

#endif
