#include "inspect/report/console.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "inspect/report/terminal.h"
#include "inspect/report/terminal_safe_text.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kProgramName = "sealkeeper-inspect: ";

bool HasText(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

// Select graphic rendition (ECMA-48, 8.3.117).
std::string_view RenditionOf(Style style) {
    switch (style) {
        case Style::Plain:
            return "";
        case Style::Strong:
            return "\x1b[1m";
        case Style::Faint:
            return "\x1b[2m";
        case Style::Good:
            return "\x1b[32m";
        case Style::Warning:
            return "\x1b[33m";
        case Style::Bad:
            return "\x1b[31m";
    }
    return "";
}

constexpr std::string_view kDefaultRendition = "\x1b[0m";

}  // namespace

Console::Console()
    : isOutputTerminal_(isatty(STDOUT_FILENO) == 1),
      isErrorTerminal_(isatty(STDERR_FILENO) == 1),
      hasColour_(isOutputTerminal_ && !HasText("NO_COLOR") && !IsDumbTerminal()) {}

void Console::Write(std::string_view text) {
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() && writeError_ == 0) {
        // A failed write must not count as success, even if errno is unset.
        writeError_ = errno != 0 ? errno : EIO;
    }
}

bool Console::Finish() {
    if (std::fflush(stdout) != 0 && writeError_ == 0) {
        writeError_ = errno;
    }
    if (writeError_ == 0 || writeError_ == EPIPE) {
        return true;
    }
    Fail(std::string("the report could not be written: ") + std::strerror(writeError_));
    return false;
}

std::string Console::Foreign(std::string_view text) const {
    return isOutputTerminal_ ? TerminalSafeText(text) : std::string(text);
}

std::string Console::Styled(Style style, std::string_view text) const {
    if (!hasColour_ || style == Style::Plain) {
        return std::string(text);
    }
    return std::string(RenditionOf(style)).append(text).append(kDefaultRendition);
}

void Console::Fail(std::string_view message) {
    // Keeps the order if both streams go to the same place.
    std::fflush(stdout);
    const std::string line = std::string(kProgramName) +
                             (isErrorTerminal_ ? TerminalSafeText(message) : std::string(message)) +
                             "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace sealkeeper
