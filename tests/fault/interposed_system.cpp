// Functions of the C library and the system that fail on demand.
#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <iconv.h>
#include <pthread.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <ctime>

#include "fault/interposition.h"

using sealkeeper::test::Call;
using sealkeeper::test::Failure;
using sealkeeper::test::FaultValue;
using sealkeeper::test::Real;
using sealkeeper::test::Strikes;

extern "C" {

// The sanitizers' pthread_create. Clang links it into the program, where the search for the next
// definition passes over it, and a sanitizer that was not told of a thread ends the program when
// the thread is joined. Null without a sanitizer.
int SanitizedPthreadCreate(pthread_t* thread, const pthread_attr_t* attributes,
                           void* (*start)(void*),
                           void* argument) __asm__("__interceptor_pthread_create")
    __attribute__((weak));

iconv_t iconv_open(const char* to, const char* from) {
    if (Strikes(Call::IconvOpen)) {
        errno = EMFILE;
        return reinterpret_cast<iconv_t>(-1);
    }
    return Real<iconv_t(const char*, const char*)>("iconv_open")(to, from);
}

size_t iconv(iconv_t converter, char** input, size_t* inputLeft, char** output,
             size_t* outputLeft) {
    if (Strikes(Call::Iconv)) {
        errno = FaultValue(Call::Iconv);
        return static_cast<size_t>(-1);
    }
    return Real<size_t(iconv_t, char**, size_t*, char**, size_t*)>("iconv")(
        converter, input, inputLeft, output, outputLeft);
}

char* getcwd(char* buffer, size_t size) SEALKEEPER_NOTHROW {
    if (Strikes(Call::GetCwd)) {
        errno = ENOENT;
        return nullptr;
    }
    return Real<char*(char*, size_t)>("getcwd")(buffer, size);
}

int chdir(const char* path) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Chdir)) {
        errno = EACCES;
        return -1;
    }
    return Real<int(const char*)>("chdir")(path);
}

// Reports another size, or fails.
int stat(const char* path, struct stat* status) SEALKEEPER_NOTHROW {
    if (Strikes(Call::StatFailure)) {
        errno = FaultValue(Call::StatFailure);
        return -1;
    }
    const int result = Real<int(const char*, struct stat*)>("stat")(path, status);
    if (Strikes(Call::Stat)) {
        status->st_size = FaultValue(Call::Stat);
    }
    return result;
}

// As above.
int fstat(int descriptor, struct stat* status) SEALKEEPER_NOTHROW {
    if (Strikes(Call::FstatFailure)) {
        errno = FaultValue(Call::FstatFailure);
        return -1;
    }
    const int result = Real<int(int, struct stat*)>("fstat")(descriptor, status);
    if (Strikes(Call::Fstat)) {
        status->st_size = FaultValue(Call::Fstat);
    }
    return result;
}

int open(const char* path, int flags, ...) {
    if (Strikes(Call::Open)) {
        return Failure(Call::Open, EACCES);
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

FILE* fdopen(int descriptor, const char* mode) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Fdopen)) {
        errno = ENOMEM;
        return nullptr;
    }
    return Real<FILE*(int, const char*)>("fdopen")(descriptor, mode);
}

int fseeko(FILE* stream, off_t offset, int whence) {
    if (Strikes(Call::Fseeko)) {
        errno = ESPIPE;
        return -1;
    }
    return Real<int(FILE*, off_t, int)>("fseeko")(stream, offset, whence);
}

// Fails halfway: what is delivered has been read.
size_t fread(void* data, size_t size, size_t count, FILE* stream) {
    auto* real = Real<size_t(void*, size_t, size_t, FILE*)>("fread");
    if (Strikes(Call::Fread)) {
        errno = EIO;
        const auto delivered = static_cast<size_t>(FaultValue(Call::Fread));
        return real(data, size, std::min(delivered, count), stream);
    }
    const size_t read = real(data, size, count, stream);
    if (Strikes(Call::FreadBytes) && read > 0) {
        static_cast<unsigned char*>(data)[0] ^= 0xFFU;
    }
    return read;
}

// Delivers a part, and fails when the caller continues.
ssize_t pread(int descriptor, void* data, size_t count, off_t offset) {
    constexpr off_t kChunkBytes = 4'194'304;
    static off_t failingOffset = -1;
    auto* real = Real<ssize_t(int, void*, size_t, off_t)>("pread");
    if (Strikes(Call::ReadInterrupted)) {
        errno = EINTR;
        return -1;
    }
    if (Strikes(Call::ReadShort)) {
        count = std::min(count, static_cast<size_t>(FaultValue(Call::ReadShort)));
    }
    const bool beginsChunk = offset % kChunkBytes == 0 && offset != failingOffset;
    if (beginsChunk && Strikes(Call::ReadChunk)) {
        failingOffset = offset + FaultValue(Call::ReadChunk);
        count = std::min(count, static_cast<size_t>(FaultValue(Call::ReadChunk)));
    }
    if (offset == failingOffset) {
        failingOffset = -1;
        errno = EIO;
        return -1;
    }
    const ssize_t read = real(descriptor, data, count, offset);
    if (beginsChunk && Strikes(Call::ReadChunkBytes) && read > 0) {
        static_cast<unsigned char*>(data)[0] ^= 0xFFU;
    }
    return read;
}

#ifdef POSIX_FADV_WILLNEED
int posix_fadvise(int descriptor, off_t offset, off_t length, int advice) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Advise)) {
        return ESPIPE;
    }
    return Real<int(int, off_t, off_t, int)>("posix_fadvise")(descriptor, offset, length, advice);
}
#endif

// Fails halfway: the first half is written.
ssize_t write(int descriptor, const void* data, size_t count) {
    auto* real = Real<ssize_t(int, const void*, size_t)>("write");
    if (Strikes(Call::WriteInterrupted)) {
        errno = EINTR;
        return -1;
    }
    if (Strikes(Call::Write)) {
        static_cast<void>(real(descriptor, data, count / 2));
        return Failure(Call::Write, ENOSPC);
    }
    if (Strikes(Call::WriteShort)) {
        count = std::min(count, static_cast<size_t>(FaultValue(Call::WriteShort)));
    }
    return real(descriptor, data, count);
}

int fsync(int descriptor) {
    if (Strikes(Call::Fsync)) {
        return Failure(Call::Fsync, EIO);
    }
    return Real<int(int)>("fsync")(descriptor);
}

int fchown(int descriptor, uid_t owner, gid_t group) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Fchown)) {
        return Failure(Call::Fchown, EPERM);
    }
    return Real<int(int, uid_t, gid_t)>("fchown")(descriptor, owner, group);
}

int fchmod(int descriptor, mode_t mode) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Fchmod)) {
        return Failure(Call::Fchmod, EIO);
    }
    return Real<int(int, mode_t)>("fchmod")(descriptor, mode);
}

int close(int descriptor) {
    const bool isWritten = (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_WRONLY;
    const int result = Real<int(int)>("close")(descriptor);
    if (isWritten && Strikes(Call::CloseWritten)) {
        return Failure(Call::CloseWritten, EIO);
    }
    return result;
}

int rename(const char* from, const char* to) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Rename)) {
        return Failure(Call::Rename, EIO);
    }
    return Real<int(const char*, const char*)>("rename")(from, to);
}

DIR* opendir(const char* directory) {
    if (Strikes(Call::Opendir)) {
        errno = FaultValue(Call::Opendir);
        return nullptr;
    }
    return Real<DIR*(const char*)>("opendir")(directory);
}

struct dirent* readdir(DIR* stream) {
    if (Strikes(Call::Readdir)) {
        errno = FaultValue(Call::Readdir);
        return nullptr;
    }
    struct dirent* const entry = Real<struct dirent*(DIR*)>("readdir")(stream);
    if (entry != nullptr && Strikes(Call::ReaddirTypes)) {
        entry->d_type = DT_UNKNOWN;
    }
    return entry;
}

int lstat(const char* path, struct stat* status) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Lstat)) {
        errno = FaultValue(Call::Lstat);
        return -1;
    }
    return Real<int(const char*, struct stat*)>("lstat")(path, status);
}

#ifdef CPU_COUNT
// Reports another number of processors, or fails.
int sched_getaffinity(pid_t process, size_t bytes, cpu_set_t* allowed) SEALKEEPER_NOTHROW {
    if (Strikes(Call::AffinityFailure)) {
        errno = EINVAL;
        return -1;
    }
    if (!Strikes(Call::Affinity)) {
        return Real<int(pid_t, size_t, cpu_set_t*)>("sched_getaffinity")(process, bytes, allowed);
    }
    for (int processor = 0; processor < FaultValue(Call::Affinity); ++processor) {
        CPU_SET(static_cast<std::size_t>(processor), allowed);
    }
    return 0;
}
#endif

#ifdef MADV_HUGEPAGE
int madvise(void* start, size_t bytes, int advice) SEALKEEPER_NOTHROW {
    if (advice == MADV_HUGEPAGE) {
        sealkeeper::test::NoteLargePages(start, bytes);
    }
    return Real<int(void*, size_t, int)>("madvise")(start, bytes, advice);
}
#endif

int fnmatch(const char* pattern, const char* name, int flags) {
    if (Strikes(Call::Fnmatch)) {
        return FaultValue(Call::Fnmatch);
    }
    return Real<int(const char*, const char*, int)>("fnmatch")(pattern, name, flags);
}

time_t time(time_t* result) SEALKEEPER_NOTHROW {
    if (!Strikes(Call::Time)) {
        return Real<time_t(time_t*)>("time")(result);
    }
    const time_t told = FaultValue(Call::Time);
    if (result != nullptr) {
        *result = told;
    }
    return told;
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) SEALKEEPER_NOTHROW {
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    if (Strikes(Call::StartThread)) {
        return EAGAIN;
    }
    Create* const create =
        SanitizedPthreadCreate != nullptr ? SanitizedPthreadCreate : Real<Create>("pthread_create");
    return create(thread, attributes, start, argument);
}

}  // extern "C"
