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

}  // namespace sealkeeper

#endif
