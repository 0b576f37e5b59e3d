#include "platform/ascii_case.h"

namespace sealkeeper {

void LowerCaseAscii(std::string& text) {
    for (char& byte : text) {
        if (byte >= 'A' && byte <= 'Z') {
            byte = static_cast<char>(byte - 'A' + 'a');
        }
    }
}

}  // namespace sealkeeper
