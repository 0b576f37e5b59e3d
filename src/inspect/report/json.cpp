#include "inspect/report/json.h"

#include <nlohmann/json.hpp>

#include "inspect/report/code_text.h"
#include "inspect/report/hex_text.h"
#include "inspect/report/utf8_text.h"

namespace sealkeeper {

std::string JsonText(const Json& document) {
    constexpr int kIndent = 2;
    return document.dump(kIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

void AddFileName(Json& object, const std::string& name, const std::string& fileName) {
    const std::string text = WellFormedUtf8(fileName);
    object[name] = text;
    if (text != fileName) {
        object[name + "Hex"] = HexText(fileName);
    }
}

void AddFailure(Json& object, const std::string& failure, int status) {
    object["failure"] = failure;
    object["status"] = status;
}

void AddCode(Json& object, ResultCode code) {
    object["code"] = ResultCodeNumber(code);
    object["result"] = CodeName(code);
}

}  // namespace sealkeeper
