#include "catalogue/chunked_file_reader.h"

#include <sys/types.h>

#include <algorithm>
#include <utility>

#include "catalogue/game_file_index.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

ChunkedFileReader::ChunkedFileReader(std::wstring path, std::size_t chunkBytes)
    : path_(std::move(path)), chunkBytes_(chunkBytes) {}

bool ChunkedFileReader::Open() {
    if (OpenAtPath()) {
        return true;
    }
    std::wstring realPath;
    if (!FindGameFile(ProcessGameFileIndex(), path_, realPath)) {
        return false;
    }
    path_ = realPath;
    return OpenAtPath();
}

bool ChunkedFileReader::OpenAtPath() {
    OpenedFile file = OpenForReading(WideToUtf8(path_));
    stream_ = std::move(file.stream);
    status_ = file.status;
    if (!stream_) {
        return false;
    }
    // Chunks are read straight into the buffer; one of the stream's own would only be copied from.
    std::setvbuf(stream_.get(), nullptr, _IONBF, 0);
    return true;
}

bool ChunkedFileReader::AllocateBuffer(std::uint64_t sizeBytes) {
    if (sizeBytes == 0 || !buffer_.empty()) {
        return false;
    }
    buffer_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(sizeBytes, chunkBytes_)));
    expectedBytes_ = sizeBytes;
    return true;
}

bool ChunkedFileReader::ReadNextChunk() {
    chunkLength_ = 0;
    lastReadBytes_ = 0;
    if (!stream_) {
        return false;
    }
    const auto wantedBytes =
        static_cast<std::size_t>(std::min<std::uint64_t>(buffer_.size(), expectedBytes_));
    // fread loops over short reads and stops at the end of the file or an error.
    lastReadBytes_ = std::fread(buffer_.data(), 1, wantedBytes, stream_.get());
    if (lastReadBytes_ != wantedBytes) {
        return false;
    }
    chunkLength_ = wantedBytes;
    positionBytes_ += wantedBytes;
    expectedBytes_ -= wantedBytes;
    return true;
}

bool ChunkedFileReader::RewindFailedRead() {
    if (!stream_) {
        return false;
    }
    std::clearerr(stream_.get());
    return fseeko(stream_.get(), -static_cast<off_t>(lastReadBytes_), SEEK_CUR) == 0;
}

bool ChunkedFileReader::SeekTo(std::uint64_t positionBytes) {
    if (!stream_ || fseeko(stream_.get(), static_cast<off_t>(positionBytes), SEEK_SET) != 0) {
        return false;
    }
    expectedBytes_ = positionBytes_ + expectedBytes_ - positionBytes;
    positionBytes_ = positionBytes;
    return true;
}

std::span<const std::uint8_t> ChunkedFileReader::Chunk() const {
    return std::span(buffer_).first(chunkLength_);
}

}  // namespace sealkeeper
