#include "inspect/credentials/shell_word.h"

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

std::string ShellCommand(std::string_view pattern, const std::string& in, const std::string& out) {
    constexpr std::string_view kIn = "{in}";
    constexpr std::string_view kOut = "{out}";
    std::string command;
    while (!pattern.empty()) {
        std::size_t taken = 1;
        if (pattern.substr(0, kIn.size()) == kIn) {
            command += ShellWord(in);
            taken = kIn.size();
        } else if (pattern.substr(0, kOut.size()) == kOut) {
            command += ShellWord(out);
            taken = kOut.size();
        } else {
            command += pattern.front();
        }
        pattern.remove_prefix(taken);
    }
    return command;
}

}  // namespace sealkeeper
