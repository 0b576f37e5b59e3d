#include "inspect/report/terminal.h"

#include <sys/ioctl.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace sealkeeper {
namespace {

// 0 if the variable holds no such number.
std::size_t NumberIn(const char* variable) {
    const char* const value = std::getenv(variable);
    const std::string_view text = value == nullptr ? "" : value;
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

}  // namespace

bool IsDumbTerminal() {
    const char* const kind = std::getenv("TERM");
    return kind == nullptr || std::string_view(kind) == "dumb";
}

std::size_t TerminalColumns(int descriptor) {
    constexpr std::size_t kUsual = 80;
    if (const std::size_t columns = NumberIn("COLUMNS"); columns > 0) {
        return columns;
    }
    winsize size{};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsual;
}

}  // namespace sealkeeper
