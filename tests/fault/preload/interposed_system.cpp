// The remaining system functions: converters, time, random numbers, memory, threads, limits and
// signals.
#include <iconv.h>
#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/random.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <cstdarg>
#include <cstddef>

#include "fault/preload/interposed.h"

using sealkeeper::fault::Interposed;

extern "C" {

iconv_t iconv_open(const char* to, const char* from) {
    static constinit Interposed<iconv_t(const char*, const char*)> function("iconv_open");
    return function.OrFail(reinterpret_cast<iconv_t>(-1), {}, to, from);
}

std::size_t iconv(iconv_t converter, char** input, std::size_t* inputLeft, char** output,
                  std::size_t* outputLeft) {
    static constinit Interposed<std::size_t(iconv_t, char**, std::size_t*, char**, std::size_t*)>
        function("iconv");
    return function.OrFail(static_cast<std::size_t>(-1), {}, converter, input, inputLeft, output,
                           outputLeft);
}

time_t time(time_t* now) noexcept {
    static constinit Interposed<time_t(time_t*)> function("time");
    return function.OrFail(-1, {}, now);
}

struct tm* gmtime_r(const time_t* moment, struct tm* parts) noexcept {
    static constinit Interposed<struct tm*(const time_t*, struct tm*)> function("gmtime_r");
    return function.OrFail(nullptr, {}, moment, parts);
}

int clock_gettime(clockid_t clock, struct timespec* now) noexcept {
    static constinit Interposed<int(clockid_t, struct timespec*)> function("clock_gettime");
    return function.OrFail(-1, {}, clock, now);
}

ssize_t getrandom(void* data, std::size_t size, unsigned flags) {
    static constinit Interposed<ssize_t(void*, std::size_t, unsigned)> function("getrandom");
    return function.OrFail(-1, {}, data, size, flags);
}

int getentropy(void* data, std::size_t size) {
    static constinit Interposed<int(void*, std::size_t)> function("getentropy");
    return function.OrFail(-1, {}, data, size);
}

// Only random numbers fail. The C++ library also waits through system calls, which do not fail.
long syscall(long number, ...) noexcept {
    static constinit Interposed<long(long, long, long, long, long, long, long)> function("syscall");
    std::va_list list;
    va_start(list, number);
    long arguments[6];
    for (long& argument : arguments) {
        argument = va_arg(list, long);
    }
    va_end(list);
    const auto fault = number == SYS_getrandom ? function.Next() : std::nullopt;
    if (fault) {
        errno = fault->value;
        return -1;
    }
    return function.Real(number, arguments[0], arguments[1], arguments[2], arguments[3],
                         arguments[4], arguments[5]);
}

void* mmap(void* address, std::size_t size, int protection, int flags, int descriptor,
           off_t offset) noexcept {
    static constinit Interposed<void*(void*, std::size_t, int, int, int, off_t)> function("mmap");
    return function.OrFail(MAP_FAILED, {nullptr, descriptor}, address, size, protection, flags,
                           descriptor, offset);
}

int madvise(void* address, std::size_t size, int advice) noexcept {
    static constinit Interposed<int(void*, std::size_t, int)> function("madvise");
    return function.OrFail(-1, {}, address, size, advice);
}

int mprotect(void* address, std::size_t size, int protection) noexcept {
    static constinit Interposed<int(void*, std::size_t, int)> function("mprotect");
    return function.OrFail(-1, {}, address, size, protection);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
    static constinit Interposed<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>
        function("pthread_create");
    return function.OrReturn({}, thread, attributes, start, argument);
}

long sysconf(int name) noexcept {
    static constinit Interposed<long(int)> function("sysconf");
    return function.OrFail(-1, {}, name);
}

int sched_getaffinity(pid_t process, std::size_t size, cpu_set_t* processors) noexcept {
    static constinit Interposed<int(pid_t, std::size_t, cpu_set_t*)> function("sched_getaffinity");
    return function.OrFail(-1, {}, process, size, processors);
}

int getrlimit(__rlimit_resource_t resource, struct rlimit* limit) noexcept {
    static constinit Interposed<int(__rlimit_resource_t, struct rlimit*)> function("getrlimit");
    return function.OrFail(-1, {}, resource, limit);
}

int setrlimit(__rlimit_resource_t resource, const struct rlimit* limit) noexcept {
    static constinit Interposed<int(__rlimit_resource_t, const struct rlimit*)> function(
        "setrlimit");
    return function.OrFail(-1, {}, resource, limit);
}

int prctl(int option, ...) noexcept {
    static constinit Interposed<int(int, unsigned long, unsigned long, unsigned long,
                                    unsigned long)>
        function("prctl");
    std::va_list list;
    va_start(list, option);
    unsigned long arguments[4];
    for (unsigned long& argument : arguments) {
        argument = va_arg(list, unsigned long);
    }
    va_end(list);
    return function.OrFail(-1, {}, option, arguments[0], arguments[1], arguments[2], arguments[3]);
}

int sigaction(int signal, const struct sigaction* action, struct sigaction* before) noexcept {
    static constinit Interposed<int(int, const struct sigaction*, struct sigaction*)> function(
        "sigaction");
    return function.OrFail(-1, {}, signal, action, before);
}

}  // extern "C"
