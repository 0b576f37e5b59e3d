// Files by descriptor and by path.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "fault/preload/interposed.h"

using sealkeeper::fault::FaultKind;
using sealkeeper::fault::Interposed;

namespace {

// At least one byte, since none means the end of the file.
std::size_t Shortened(std::size_t wanted, int delivered) {
    return std::min(wanted, static_cast<std::size_t>(delivered));
}

bool MayCreate(int flags) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    static constinit Interposed<int(const char*, int, mode_t)> function("open");
    mode_t mode = 0;
    if (MayCreate(flags)) {
        std::va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return function.OrFail(-1, {path}, path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...) {
    static constinit Interposed<int(int, const char*, int, mode_t)> function("openat");
    mode_t mode = 0;
    if (MayCreate(flags)) {
        std::va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return function.OrFail(-1, {path}, directory, path, flags, mode);
}

int mkstemp(char* pattern) {
    static constinit Interposed<int(char*)> function("mkstemp");
    return function.OrFail(-1, {pattern}, pattern);
}

int close(int descriptor) {
    static constinit Interposed<int(int)> function("close");
    return function.ThenFail(-1, {nullptr, descriptor}, descriptor);
}

int fcntl(int descriptor, int command, ...) {
    static constinit Interposed<int(int, int, void*)> function("fcntl");
    std::va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return function.OrFail(-1, {nullptr, descriptor}, descriptor, command, argument);
}

ssize_t read(int descriptor, void* data, std::size_t count) {
    static constinit Interposed<ssize_t(int, void*, std::size_t)> function("read");
    const auto fault = function.Next({nullptr, descriptor});
    if (fault && fault->kind == FaultKind::Fail) {
        errno = fault->value;
        return -1;
    }
    return function.Real(descriptor, data, fault ? Shortened(count, fault->value) : count);
}

ssize_t pread(int descriptor, void* data, std::size_t count, off_t offset) {
    static constinit Interposed<ssize_t(int, void*, std::size_t, off_t)> function("pread");
    const auto fault = function.Next({nullptr, descriptor});
    if (fault && fault->kind == FaultKind::Fail) {
        errno = fault->value;
        return -1;
    }
    const bool isShort = fault && fault->kind == FaultKind::Short;
    const ssize_t delivered =
        function.Real(descriptor, data, isShort ? Shortened(count, fault->value) : count, offset);
    if (fault && fault->kind == FaultKind::Wrong && delivered > 0) {
        static_cast<unsigned char*>(data)[0] ^= 0xFFU;
    }
    return delivered;
}

ssize_t write(int descriptor, const void* data, std::size_t count) {
    static constinit Interposed<ssize_t(int, const void*, std::size_t)> function("write");
    const auto fault = function.Next({nullptr, descriptor});
    if (fault && fault->kind == FaultKind::Fail) {
        errno = fault->value;
        return -1;
    }
    return function.Real(descriptor, data, fault ? Shortened(count, fault->value) : count);
}

int fsync(int descriptor) {
    static constinit Interposed<int(int)> function("fsync");
    return function.OrFail(-1, {nullptr, descriptor}, descriptor);
}

int fdatasync(int descriptor) {
    static constinit Interposed<int(int)> function("fdatasync");
    return function.OrFail(-1, {nullptr, descriptor}, descriptor);
}

int fchmod(int descriptor, mode_t mode) noexcept {
    static constinit Interposed<int(int, mode_t)> function("fchmod");
    return function.OrFail(-1, {nullptr, descriptor}, descriptor, mode);
}

int fchown(int descriptor, uid_t owner, gid_t group) noexcept {
    static constinit Interposed<int(int, uid_t, gid_t)> function("fchown");
    return function.OrFail(-1, {nullptr, descriptor}, descriptor, owner, group);
}

int ftruncate(int descriptor, off_t length) noexcept {
    static constinit Interposed<int(int, off_t)> function("ftruncate");
    return function.OrFail(-1, {nullptr, descriptor}, descriptor, length);
}

int posix_fadvise(int descriptor, off_t offset, off_t length, int advice) noexcept {
    static constinit Interposed<int(int, off_t, off_t, int)> function("posix_fadvise");
    return function.OrReturn({nullptr, descriptor}, descriptor, offset, length, advice);
}

int stat(const char* path, struct stat* status) noexcept {
    static constinit Interposed<int(const char*, struct stat*)> function("stat");
    return function.OrFail(-1, {path}, path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    static constinit Interposed<int(const char*, struct stat*)> function("lstat");
    return function.OrFail(-1, {path}, path, status);
}

int fstat(int descriptor, struct stat* status) noexcept {
    static constinit Interposed<int(int, struct stat*)> function("fstat");
    return function.OrFail(-1, {nullptr, descriptor}, descriptor, status);
}

int fstatat(int directory, const char* path, struct stat* status, int flags) noexcept {
    static constinit Interposed<int(int, const char*, struct stat*, int)> function("fstatat");
    return function.OrFail(-1, {path}, directory, path, status, flags);
}

int access(const char* path, int mode) noexcept {
    static constinit Interposed<int(const char*, int)> function("access");
    return function.OrFail(-1, {path}, path, mode);
}

ssize_t readlink(const char* path, char* target, std::size_t size) noexcept {
    static constinit Interposed<ssize_t(const char*, char*, std::size_t)> function("readlink");
    return function.OrFail(-1, {path}, path, target, size);
}

int rename(const char* from, const char* to) noexcept {
    static constinit Interposed<int(const char*, const char*)> function("rename");
    return function.OrFail(-1, {from}, from, to);
}

int link(const char* from, const char* to) noexcept {
    static constinit Interposed<int(const char*, const char*)> function("link");
    return function.OrFail(-1, {from}, from, to);
}

int unlink(const char* path) noexcept {
    static constinit Interposed<int(const char*)> function("unlink");
    return function.OrFail(-1, {path}, path);
}

int remove(const char* path) noexcept {
    static constinit Interposed<int(const char*)> function("remove");
    return function.OrFail(-1, {path}, path);
}

char* realpath(const char* path, char* resolved) noexcept {
    static constinit Interposed<char*(const char*, char*)> function("realpath");
    return function.OrFail(nullptr, {path}, path, resolved);
}

// As in interposed_streams.cpp.

ssize_t __read_chk(int descriptor, void* data, std::size_t count, std::size_t /*room*/) {
    return read(descriptor, data, count);
}

ssize_t __pread_chk(int descriptor, void* data, std::size_t count, off_t offset,
                    std::size_t /*room*/) {
    return pread(descriptor, data, count, offset);
}

ssize_t __readlink_chk(const char* path, char* target, std::size_t size,
                       std::size_t /*room*/) noexcept {
    return readlink(path, target, size);
}

char* __realpath_chk(const char* path, char* resolved, std::size_t /*room*/) noexcept {
    return realpath(path, resolved);
}

}  // extern "C"
