#include "inspect/credentials/shell_word.h"

#include <string_view>

namespace sealkeeper {

std::string ShellWord(const std::string& path) {
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-+,:@%";
    std::string word = path.substr(0, 1) == "-" ? "./" + path : path;
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string::npos) {
        return word;
    }
    std::string quoted = "'";
    for (const char character : word) {
        if (character == '\'') {
            quoted += "'\\''";
        } else {
            quoted += character;
        }
    }
    return quoted + "'";
}

}  // namespace sealkeeper
