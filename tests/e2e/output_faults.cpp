// Preloaded into the program. Strikes at one of the calls that change files, number
// SEALKEEPER_FAULT_AT, counted from 0. If SEALKEEPER_FAULT is "kill", it kills the process there,
// in the middle of a write. Otherwise it is the errno with which the call fails.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <cstring>

// glibc declares some of these functions noexcept, and a definition must repeat that.
#ifdef __GLIBC__
#define SEALKEEPER_NOTHROW noexcept
#else
#define SEALKEEPER_NOTHROW
#endif

namespace {

constexpr const char* kKill = "kill";

const char* Setting(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool Strikes() {
    static const long strikingCall = std::strtol(Setting("SEALKEEPER_FAULT_AT"), nullptr, 10);
    static long callCount = 0;
    return callCount++ == strikingCall;
}

bool Kills() {
    return std::strcmp(Setting("SEALKEEPER_FAULT"), kKill) == 0;
}

// The result of the call that fails.
int Fail() {
    if (Kills()) {
        std::raise(SIGKILL);
    }
    errno = static_cast<int>(std::strtol(Setting("SEALKEEPER_FAULT"), nullptr, 10));
    return -1;
}

template <typename Function>
Function* Real(const char* name) {
    // POSIX has dlsym return functions as object pointers.
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool IsOutput(int descriptor) {
    return descriptor > STDERR_FILENO && (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_WRONLY;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    if ((flags & O_ACCMODE) == O_WRONLY && Strikes()) {
        return Fail();
    }
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = static_cast<mode_t>(va_arg(arguments, int));
        va_end(arguments);
    }
    return Real<int(const char*, int, ...)>("open")(path, flags, mode);
}

ssize_t write(int descriptor, const void* data, size_t count) {
    auto* real = Real<ssize_t(int, const void*, size_t)>("write");
    if (!IsOutput(descriptor) || !Strikes()) {
        return real(descriptor, data, count);
    }
    if (Kills()) {
        static_cast<void>(real(descriptor, data, count / 2) < 0);
    }
    return Fail();
}

int fsync(int descriptor) {
    return Strikes() ? Fail() : Real<int(int)>("fsync")(descriptor);
}

int fchmod(int descriptor, mode_t mode) SEALKEEPER_NOTHROW {
    return Strikes() ? Fail() : Real<int(int, mode_t)>("fchmod")(descriptor, mode);
}

int fchown(int descriptor, uid_t owner, gid_t group) SEALKEEPER_NOTHROW {
    return Strikes() ? Fail() : Real<int(int, uid_t, gid_t)>("fchown")(descriptor, owner, group);
}

int close(int descriptor) {
    const bool strikes = IsOutput(descriptor) && Strikes();
    if (strikes && Kills()) {
        return Fail();
    }
    const int result = Real<int(int)>("close")(descriptor);
    return strikes ? Fail() : result;
}

int rename(const char* from, const char* to) SEALKEEPER_NOTHROW {
    return Strikes() ? Fail() : Real<int(const char*, const char*)>("rename")(from, to);
}

}  // extern "C"
