#include "platform/file_io.h"

#include <sys/types.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

#include "platform/file_descriptor.h"

namespace sealkeeper {

OpenedFile OpenForReading(const std::string& path) {
    // Opening a FIFO would release a waiting writer.
    if (GetFileType(path) == FileType::Fifo) {
        return {};
    }
    FileDescriptor descriptor;
    if (!descriptor.OpenForReading(path)) {
        return {};
    }
    const FileStatus status = StatusOfOpenFile(descriptor.Get());
    if (status.type == FileType::Fifo) {
        return {};
    }
    FileStream stream(fdopen(descriptor.Get(), "rb"));
    if (!stream) {
        return {};
    }
    descriptor.Release();
    return {std::move(stream), status};
}

std::optional<SizedFile> OpenSizedFile(const std::string& path) {
    static_assert(sizeof(off_t) == sizeof(std::int64_t));
    OpenedFile file = OpenForReading(path);
    // The size of a directory means nothing.
    if (!file.stream || file.status.type == FileType::Directory ||
        fseeko(file.stream.get(), 0, SEEK_END) != 0) {
        return std::nullopt;
    }
    const off_t sizeBytes = ftello(file.stream.get());
    if (sizeBytes < 0 || fseeko(file.stream.get(), 0, SEEK_SET) != 0) {
        return std::nullopt;
    }
    return SizedFile{std::move(file.stream), static_cast<std::uint64_t>(sizeBytes)};
}

bool ReadOn(SizedFile& file, std::uint64_t limitBytes, std::vector<std::uint8_t>& bytes) {
    const std::size_t readBefore = bytes.size();
    const auto endBytes = static_cast<std::size_t>(std::min(file.sizeBytes, limitBytes));
    if (endBytes <= readBefore) {
        return true;
    }
    bytes.resize(endBytes);
    return std::fread(bytes.data() + readBefore, 1, endBytes - readBefore, file.stream.get()) ==
           endBytes - readBefore;
}

std::optional<FileStart> ReadFileStart(const std::string& path, std::uint64_t limitBytes) {
    auto file = OpenSizedFile(path);
    FileStart start;
    if (!file || !ReadOn(*file, limitBytes, start.bytes)) {
        return std::nullopt;
    }
    start.fileSizeBytes = file->sizeBytes;
    return start;
}

std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::string& path) {
    auto start = ReadFileStart(path, std::numeric_limits<std::uint64_t>::max());
    if (!start) {
        return std::nullopt;
    }
    return std::move(start->bytes);
}

}  // namespace sealkeeper
