// Buffered reading of files: the owner of a stream, and whole files read at once.
#ifndef SEALKEEPER_PLATFORM_FILE_IO_H
#define SEALKEEPER_PLATFORM_FILE_IO_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace sealkeeper {

struct FileCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

// A stream open for reading, closed when it goes out of scope.
using FileStream = std::unique_ptr<std::FILE, FileCloser>;

// A file open for reading, and its status.
struct OpenedFile {
    // Null when the file cannot be opened.
    FileStream stream;
    FileStatus status;
};

// Opens the file at `path` for reading. A FIFO counts as a file that cannot be opened, because
// reading it would wait for a writer. A directory can be opened, but not read.
[[nodiscard]] OpenedFile OpenForReading(const std::string& path);

// A file open at its start, and its size as a seek to its end reports it.
struct SizedFile {
    FileStream stream;
    std::uint64_t sizeBytes = 0;
};

// Opens the file at `path` for reading. Nothing when it cannot be opened or is a FIFO or a
// directory.
[[nodiscard]] std::optional<SizedFile> OpenSizedFile(const std::string& path);

// Reads on. `bytes` holds all that was read of `file` so far; afterwards it holds the first
// `limitBytes` bytes of the file, or all of a file that is no longer. False when they cannot be
// read; then neither `file` nor `bytes` may be used.
[[nodiscard]] bool ReadOn(SizedFile& file, std::uint64_t limitBytes,
                          std::vector<std::uint8_t>& bytes);

// The first bytes of a file.
struct FileStart {
    std::vector<std::uint8_t> bytes;
    // The size of the whole file.
    std::uint64_t fileSizeBytes = 0;
};

// The first `limitBytes` bytes of the file at `path`, or all of a file that is no longer. Nothing
// when they cannot be read, or for a FIFO or a directory.
[[nodiscard]] std::optional<FileStart> ReadFileStart(const std::string& path,
                                                     std::uint64_t limitBytes);

// All bytes of the file at `path`; nothing under the same conditions.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::string& path);

}  // namespace sealkeeper

#endif
