#include "platform/ascii_case.h"

namespace sealkeeper {

std::string LowerCasedAscii(std::string_view text) {
    std::string lowered(text);
    for (char& byte : lowered) {
        if (byte >= 'A' && byte <= 'Z') {
            byte = static_cast<char>(byte - 'A' + 'a');
        }
    }
    return lowered;
}

bool IsAsciiLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

}  // namespace sealkeeper
