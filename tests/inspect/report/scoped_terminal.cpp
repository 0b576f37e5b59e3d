#include "inspect/report/scoped_terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace sealkeeper::test {
namespace {

void Set(const char* name, const std::optional<std::string>& value) {
    if (value) {
        setenv(name, value->c_str(), 1);
    } else {
        unsetenv(name);
    }
}

}  // namespace

ScopedTerminal::ScopedTerminal(int descriptor) : descriptor_(descriptor) {
    std::fflush(nullptr);
    saved_ = dup(descriptor);
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    const bool isReady = saved_ >= 0 && grantpt(master_) == 0 && unlockpt(master_) == 0;
    const int slave = isReady ? open(ptsname(master_), O_RDWR | O_NOCTTY) : -1;
    if (slave < 0 || dup2(slave, descriptor) < 0) {
        throw std::runtime_error("cannot open a terminal");
    }
    close(slave);
}

ScopedTerminal::~ScopedTerminal() {
    std::fflush(nullptr);
    dup2(saved_, descriptor_);
    close(saved_);
    close(master_);
}

void ScopedTerminal::SetColumns(unsigned short columns) {
    winsize size{};
    size.ws_col = columns;
    ioctl(master_, TIOCSWINSZ, &size);
}

std::string ScopedTerminal::Written() {
    std::fflush(nullptr);
    // What is written arrives in parts. One reading may give the first alone.
    std::string written;
    std::array<char, 4096> bytes{};
    for (ssize_t length = 0; (length = read(master_, bytes.data(), bytes.size())) > 0;) {
        written.append(bytes.data(), static_cast<std::size_t>(length));
    }
    return written;
}

ScopedVariable::ScopedVariable(const char* name, std::optional<std::string> value) : name_(name) {
    if (const char* const now = std::getenv(name); now != nullptr) {
        saved_ = now;
    }
    Set(name, value);
}

ScopedVariable::~ScopedVariable() {
    Set(name_, saved_);
}

}  // namespace sealkeeper::test
