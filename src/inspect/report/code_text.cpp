#include "inspect/report/code_text.h"

namespace sealkeeper {

const char* CodeName(ResultCode code) {
    return code == kPrivateKeyFileMissing ? "the private key is missing" : ResultCodeText(code);
}

std::string CodeText(ResultCode code) {
    return std::to_string(ResultCodeNumber(code)) + " (" + CodeName(code) + ")";
}

}  // namespace sealkeeper
