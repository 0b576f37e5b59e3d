#include "fault/fault_injection.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <iconv.h>
#include <mbedtls/ctr_drbg.h>
#include <mbedtls/md.h>
#include <mbedtls/pk.h>
#include <mbedtls/sha256.h>
#include <mbedtls/version.h>
#include <mbedtls/x509_crt.h>
#include <pthread.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <new>

// glibc declares some of these functions as not throwing; a definition must repeat it.
#ifdef __GLIBC__
#define SEALKEEPER_NOTHROW noexcept
#else
#define SEALKEEPER_NOTHROW
#endif

// The functions that return a result lost their suffix in mbed TLS 3.
#if MBEDTLS_VERSION_MAJOR < 3
#define SEALKEEPER_RESULT(name) name##_ret
#define SEALKEEPER_RESULT_TEXT(name) #name "_ret"
#else
#define SEALKEEPER_RESULT(name) name
#define SEALKEEPER_RESULT_TEXT(name) #name
#endif

namespace sealkeeper::test {
namespace {

struct Fault {
    bool armed = false;
    bool struck = false;
    std::size_t callsBefore = 0;
    ScopedFault::Reach reach = ScopedFault::Reach::Onwards;
    int value = 0;
    std::size_t callCount = 0;
};

constinit std::array<Fault, static_cast<std::size_t>(Call::Count)> g_faults{};

constinit std::size_t g_largestAllocation = 0;

Fault& FaultOf(Call call) {
    return g_faults[static_cast<std::size_t>(call)];
}

// Counts the call and tells whether it has to fail.
bool Strikes(Call call) {
    Fault& fault = FaultOf(call);
    ++fault.callCount;
    if (!fault.armed) {
        return false;
    }
    if (fault.callsBefore > 0) {
        --fault.callsBefore;
        return false;
    }
    fault.struck = true;
    if (fault.reach == ScopedFault::Reach::Once) {
        fault.armed = false;
    }
    if (fault.reach == ScopedFault::Reach::Twice) {
        fault.reach = ScopedFault::Reach::Once;
    }
    if (fault.reach == ScopedFault::Reach::EveryOther) {
        fault.callsBefore = 1;
    }
    return true;
}

// Sets errno for a call that the fault strikes and returns its result.
int Failure(Call call, int usualError) {
    errno = FaultOf(call).value != 0 ? FaultOf(call).value : usualError;
    return -1;
}

template <typename Function>
Function* Real(const char* name) {
    // POSIX has dlsym return functions as object pointers.
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

ScopedFault::ScopedFault(Call call, std::size_t firstFailing, Reach reach, int value)
    : call_(call) {
    FaultOf(call) = {true, false, firstFailing, reach, value, 0};
}

ScopedFault::~ScopedFault() {
    Disarm();
}

bool ScopedFault::Struck() const {
    return FaultOf(call_).struck;
}

void ScopedFault::Disarm() {
    FaultOf(call_).armed = false;
}

std::size_t CallCount(Call call) {
    return FaultOf(call).callCount;
}

void ResetCallCount(Call call) {
    FaultOf(call).callCount = 0;
}

std::size_t LargestAllocation() {
    return g_largestAllocation;
}

void ResetLargestAllocation() {
    g_largestAllocation = 0;
}

}  // namespace sealkeeper::test

using sealkeeper::test::Call;
using sealkeeper::test::Failure;
using sealkeeper::test::FaultOf;
using sealkeeper::test::g_largestAllocation;
using sealkeeper::test::Real;
using sealkeeper::test::Strikes;

extern "C" {

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
        errno = FaultOf(Call::Iconv).value;
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

// Strikes by reporting another size, or by failing.
int stat(const char* path, struct stat* status) SEALKEEPER_NOTHROW {
    if (Strikes(Call::StatFailure)) {
        errno = FaultOf(Call::StatFailure).value;
        return -1;
    }
    const int result = Real<int(const char*, struct stat*)>("stat")(path, status);
    if (Strikes(Call::Stat)) {
        status->st_size = FaultOf(Call::Stat).value;
    }
    return result;
}

// The same.
int fstat(int descriptor, struct stat* status) SEALKEEPER_NOTHROW {
    if (Strikes(Call::FstatFailure)) {
        errno = FaultOf(Call::FstatFailure).value;
        return -1;
    }
    const int result = Real<int(int, struct stat*)>("fstat")(descriptor, status);
    if (Strikes(Call::Fstat)) {
        status->st_size = FaultOf(Call::Fstat).value;
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

// Strikes in the middle: what is delivered has been read.
size_t fread(void* data, size_t size, size_t count, FILE* stream) {
    auto* real = Real<size_t(void*, size_t, size_t, FILE*)>("fread");
    if (Strikes(Call::Fread)) {
        errno = EIO;
        const auto delivered = static_cast<size_t>(FaultOf(Call::Fread).value);
        return real(data, size, std::min(delivered, count), stream);
    }
    const size_t read = real(data, size, count, stream);
    if (Strikes(Call::FreadBytes) && read > 0) {
        static_cast<unsigned char*>(data)[0] ^= 0xFFU;
    }
    return read;
}

// Strikes by delivering a part and failing where the caller goes on.
ssize_t pread(int descriptor, void* data, size_t count, off_t offset) {
    constexpr off_t kChunkBytes = 4'194'304;
    static off_t failingOffset = -1;
    auto* real = Real<ssize_t(int, void*, size_t, off_t)>("pread");
    if (Strikes(Call::ReadInterrupted)) {
        errno = EINTR;
        return -1;
    }
    if (Strikes(Call::ReadShort)) {
        count = std::min(count, static_cast<size_t>(FaultOf(Call::ReadShort).value));
    }
    const bool beginsChunk = offset % kChunkBytes == 0 && offset != failingOffset;
    if (beginsChunk && Strikes(Call::ReadChunk)) {
        failingOffset = offset + FaultOf(Call::ReadChunk).value;
        count = std::min(count, static_cast<size_t>(FaultOf(Call::ReadChunk).value));
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

// Strikes in the middle: the first half is written.
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
        count = std::min(count, static_cast<size_t>(FaultOf(Call::WriteShort).value));
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
        errno = FaultOf(Call::Opendir).value;
        return nullptr;
    }
    return Real<DIR*(const char*)>("opendir")(directory);
}

struct dirent* readdir(DIR* stream) {
    if (Strikes(Call::Readdir)) {
        errno = FaultOf(Call::Readdir).value;
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
        errno = FaultOf(Call::Lstat).value;
        return -1;
    }
    return Real<int(const char*, struct stat*)>("lstat")(path, status);
}

#ifdef CPU_COUNT
int sched_getaffinity(pid_t process, size_t bytes, cpu_set_t* allowed) SEALKEEPER_NOTHROW {
    if (Strikes(Call::Affinity)) {
        errno = EINVAL;
        return -1;
    }
    return Real<int(pid_t, size_t, cpu_set_t*)>("sched_getaffinity")(process, bytes, allowed);
}
#endif

int fnmatch(const char* pattern, const char* name, int flags) {
    if (Strikes(Call::Fnmatch)) {
        return FaultOf(Call::Fnmatch).value;
    }
    return Real<int(const char*, const char*, int)>("fnmatch")(pattern, name, flags);
}

time_t time(time_t* result) SEALKEEPER_NOTHROW {
    if (!Strikes(Call::Time)) {
        return Real<time_t(time_t*)>("time")(result);
    }
    const time_t told = FaultOf(Call::Time).value;
    if (result != nullptr) {
        *result = told;
    }
    return told;
}

// Strikes behind the parsing, with all of it left.
int mbedtls_x509_crt_parse_der(mbedtls_x509_crt* chain, const unsigned char* bytes, size_t size) {
    const int result = Real<int(mbedtls_x509_crt*, const unsigned char*, size_t)>(
        "mbedtls_x509_crt_parse_der")(chain, bytes, size);
    return Strikes(Call::ParseCertificate) ? MBEDTLS_ERR_X509_ALLOC_FAILED : result;
}

int mbedtls_x509_crt_verify(mbedtls_x509_crt* certificate, mbedtls_x509_crt* authority,
                            mbedtls_x509_crl* revoked, const char* name, uint32_t* flags,
                            int (*callback)(void*, mbedtls_x509_crt*, int, uint32_t*),
                            void* argument) {
    using Verify = int(mbedtls_x509_crt*, mbedtls_x509_crt*, mbedtls_x509_crl*, const char*,
                       uint32_t*, int (*)(void*, mbedtls_x509_crt*, int, uint32_t*), void*);
    if (Strikes(Call::VerifyChain)) {
        *flags = MBEDTLS_X509_BADCERT_NOT_TRUSTED;
        return FaultOf(Call::VerifyChain).value;
    }
    return Real<Verify>("mbedtls_x509_crt_verify")(certificate, authority, revoked, name, flags,
                                                   callback, argument);
}

// Strikes behind the signing, with the signature and its length left.
#if MBEDTLS_VERSION_MAJOR < 3
int mbedtls_pk_sign(mbedtls_pk_context* key, mbedtls_md_type_t type, const unsigned char* digest,
                    size_t digestSize, unsigned char* signature, size_t* signatureSize,
                    int (*random)(void*, unsigned char*, size_t), void* state) {
    using Sign = int(mbedtls_pk_context*, mbedtls_md_type_t, const unsigned char*, size_t,
                     unsigned char*, size_t*, int (*)(void*, unsigned char*, size_t), void*);
    const int result = Real<Sign>("mbedtls_pk_sign")(key, type, digest, digestSize, signature,
                                                     signatureSize, random, state);
#else
int mbedtls_pk_sign(mbedtls_pk_context* key, mbedtls_md_type_t type, const unsigned char* digest,
                    size_t digestSize, unsigned char* signature, size_t roomSize,
                    size_t* signatureSize, int (*random)(void*, unsigned char*, size_t),
                    void* state) {
    using Sign =
        int(mbedtls_pk_context*, mbedtls_md_type_t, const unsigned char*, size_t, unsigned char*,
            size_t, size_t*, int (*)(void*, unsigned char*, size_t), void*);
    const int result = Real<Sign>("mbedtls_pk_sign")(key, type, digest, digestSize, signature,
                                                     roomSize, signatureSize, random, state);
#endif
    return Strikes(Call::Sign) ? MBEDTLS_ERR_PK_ALLOC_FAILED : result;
}

int mbedtls_ctr_drbg_seed(mbedtls_ctr_drbg_context* context,
                          int (*entropy)(void*, unsigned char*, size_t), void* source,
                          const unsigned char* custom, size_t length) {
    using Seed = int(mbedtls_ctr_drbg_context*, int (*)(void*, unsigned char*, size_t), void*,
                     const unsigned char*, size_t);
    if (Strikes(Call::SeedGenerator)) {
        return MBEDTLS_ERR_CTR_DRBG_ENTROPY_SOURCE_FAILED;
    }
    return Real<Seed>("mbedtls_ctr_drbg_seed")(context, entropy, source, custom, length);
}

int SEALKEEPER_RESULT(mbedtls_sha256)(const unsigned char* data, size_t size, unsigned char* digest,
                                      int is224) {
    const int result = Real<int(const unsigned char*, size_t, unsigned char*, int)>(
        SEALKEEPER_RESULT_TEXT(mbedtls_sha256))(data, size, digest, is224);
    return Strikes(Call::Sha256) ? MBEDTLS_ERR_SHA256_BAD_INPUT_DATA : result;
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) SEALKEEPER_NOTHROW {
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    if (Strikes(Call::StartThread)) {
        return EAGAIN;
    }
    return Real<Create>("pthread_create")(thread, attributes, start, argument);
}

}  // extern "C"

namespace {

void* Allocate(std::size_t size, std::size_t alignment) {
    g_largestAllocation = std::max(g_largestAllocation, size);
    void* memory = nullptr;
    if (Strikes(Call::Allocation) || posix_memalign(&memory, alignment, size > 0 ? size : 1) != 0) {
        throw std::bad_alloc();
    }
    return memory;
}

}  // namespace

// All forms, those without exceptions too: what one allocates another may give back, and some
// sanitizers have forms of their own for those that are left out.
void* operator new(std::size_t size) {
    return Allocate(size, alignof(std::max_align_t));
}

void* operator new[](std::size_t size) {
    return Allocate(size, alignof(std::max_align_t));
}

void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void* operator new[](std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    return operator new(size, std::nothrow);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}

void* operator new[](std::size_t size, std::align_val_t alignment) {
    return Allocate(size, static_cast<std::size_t>(alignment));
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete[](void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/,
                       std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
