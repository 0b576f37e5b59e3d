// Buffered streams, and formatting for them.
#include <wchar.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "fault/preload/interposed.h"

using sealkeeper::fault::CallCounter;
using sealkeeper::fault::FaultKind;
using sealkeeper::fault::Interposed;
using sealkeeper::fault::Subject;

namespace {

Subject Of(std::FILE* stream) {
    return {nullptr, stream == nullptr ? -1 : fileno(stream)};
}

int PrintFormatted(std::FILE* stream, const char* format, std::va_list arguments) {
    static constinit CallCounter counter("fprintf");
    if (const auto fault = counter.Next(Of(stream))) {
        errno = fault->value;
        return -1;
    }
    return std::vfprintf(stream, format, arguments);
}

}  // namespace

extern "C" {

std::FILE* fopen(const char* path, const char* mode) {
    static constinit Interposed<std::FILE*(const char*, const char*)> function("fopen");
    return function.OrFail(nullptr, {path}, path, mode);
}

std::FILE* fdopen(int descriptor, const char* mode) noexcept {
    static constinit Interposed<std::FILE*(int, const char*)> function("fdopen");
    return function.OrFail(nullptr, {nullptr, descriptor}, descriptor, mode);
}

std::size_t fread(void* data, std::size_t size, std::size_t count, std::FILE* stream) {
    static constinit Interposed<std::size_t(void*, std::size_t, std::size_t, std::FILE*)> function(
        "fread");
    const auto fault = function.Next(Of(stream));
    if (fault && fault->kind == FaultKind::Fail) {
        errno = fault->value;
        return 0;
    }
    const std::size_t wanted =
        fault ? std::min(count, static_cast<std::size_t>(fault->value)) : count;
    return function.Real(data, size, wanted, stream);
}

std::size_t fwrite(const void* data, std::size_t size, std::size_t count, std::FILE* stream) {
    static constinit Interposed<std::size_t(const void*, std::size_t, std::size_t, std::FILE*)>
        function("fwrite");
    const auto fault = function.Next(Of(stream));
    if (fault && fault->kind == FaultKind::Fail) {
        errno = fault->value;
        return 0;
    }
    const std::size_t wanted =
        fault ? std::min(count, static_cast<std::size_t>(fault->value)) : count;
    return function.Real(data, size, wanted, stream);
}

int fflush(std::FILE* stream) {
    static constinit Interposed<int(std::FILE*)> function("fflush");
    return function.OrFail(EOF, Of(stream), stream);
}

int fclose(std::FILE* stream) {
    static constinit Interposed<int(std::FILE*)> function("fclose");
    return function.ThenFail(EOF, Of(stream), stream);
}

int fseek(std::FILE* stream, long offset, int whence) {
    static constinit Interposed<int(std::FILE*, long, int)> function("fseek");
    return function.OrFail(-1, Of(stream), stream, offset, whence);
}

int fseeko(std::FILE* stream, off_t offset, int whence) {
    static constinit Interposed<int(std::FILE*, off_t, int)> function("fseeko");
    return function.OrFail(-1, Of(stream), stream, offset, whence);
}

long ftell(std::FILE* stream) {
    static constinit Interposed<long(std::FILE*)> function("ftell");
    return function.OrFail(-1, Of(stream), stream);
}

off_t ftello(std::FILE* stream) {
    static constinit Interposed<off_t(std::FILE*)> function("ftello");
    return function.OrFail(-1, Of(stream), stream);
}

int fputc(int character, std::FILE* stream) {
    static constinit Interposed<int(int, std::FILE*)> function("fputc");
    return function.OrFail(EOF, Of(stream), character, stream);
}

int fputs(const char* text, std::FILE* stream) {
    static constinit Interposed<int(const char*, std::FILE*)> function("fputs");
    return function.OrFail(EOF, Of(stream), text, stream);
}

int fprintf(std::FILE* stream, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int written = PrintFormatted(stream, format, arguments);
    va_end(arguments);
    return written;
}

int vsnprintf(char* text, std::size_t size, const char* format, std::va_list arguments) noexcept {
    static constinit Interposed<int(char*, std::size_t, const char*, std::va_list)> function(
        "vsnprintf");
    if (const auto fault = function.Next()) {
        errno = fault->value;
        return -1;
    }
    return function.Real(text, size, format, arguments);
}

std::size_t mbstowcs(wchar_t* wide, const char* narrow, std::size_t count) noexcept {
    static constinit Interposed<std::size_t(wchar_t*, const char*, std::size_t)> function(
        "mbstowcs");
    return function.OrFail(static_cast<std::size_t>(-1), {}, wide, narrow, count);
}

// The compiler calls these instead if it checks buffer sizes (_FORTIFY_SOURCE).

int __fprintf_chk(std::FILE* stream, int /*flag*/, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int written = PrintFormatted(stream, format, arguments);
    va_end(arguments);
    return written;
}

int __vsnprintf_chk(char* text, std::size_t size, int /*flag*/, std::size_t /*room*/,
                    const char* format, std::va_list arguments) noexcept {
    return vsnprintf(text, size, format, arguments);
}

std::size_t __fread_chk(void* data, std::size_t /*room*/, std::size_t size, std::size_t count,
                        std::FILE* stream) {
    return fread(data, size, count, stream);
}

std::size_t __mbstowcs_chk(wchar_t* wide, const char* narrow, std::size_t count,
                           std::size_t /*room*/) noexcept {
    return mbstowcs(wide, narrow, count);
}

}  // extern "C"
