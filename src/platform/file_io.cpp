#include "platform/file_io.h"

#include <sys/types.h>

#include <cstddef>

#include "platform/file_system.h"

namespace sealkeeper {

std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::string& path) {
    static_assert(sizeof(off_t) == sizeof(std::int64_t));
    // Opening a FIFO would wait for a writer, and a directory tells sizes that mean nothing.
    const FileType type = GetFileType(path);
    if (type == FileType::Fifo || type == FileType::Directory) {
        return std::nullopt;
    }
    const FileStream stream(std::fopen(path.c_str(), "rb"));
    if (!stream || fseeko(stream.get(), 0, SEEK_END) != 0) {
        return std::nullopt;
    }
    const off_t sizeBytes = ftello(stream.get());
    if (sizeBytes < 0 || fseeko(stream.get(), 0, SEEK_SET) != 0) {
        return std::nullopt;
    }

    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(sizeBytes));
    if (std::fread(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size()) {
        return std::nullopt;
    }
    return bytes;
}

WriteOutcome WriteWholeFile(const std::string& path, std::span<const std::uint8_t> bytes) {
    // Opening a FIFO would wait for a reader.
    if (GetFileType(path) == FileType::Fifo) {
        return WriteOutcome::OpenFailed;
    }
    FileStream stream(std::fopen(path.c_str(), "wb"));
    if (!stream) {
        return WriteOutcome::OpenFailed;
    }
    // A full disk may show only when the buffered bytes leave the stream, so the flush decides.
    const bool taken = std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) == bytes.size() &&
                       std::fflush(stream.get()) == 0;
    const bool closed = std::fclose(stream.release()) == 0;
    if (!taken) {
        return WriteOutcome::WriteFailed;
    }
    return closed ? WriteOutcome::Written : WriteOutcome::CloseFailed;
}

}  // namespace sealkeeper
