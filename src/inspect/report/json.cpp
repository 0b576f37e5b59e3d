#include "inspect/report/json.h"

#include <nlohmann/json.hpp>

namespace sealkeeper {

std::string JsonText(const Json& document) {
    constexpr int kIndent = 2;
    return document.dump(kIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace sealkeeper
