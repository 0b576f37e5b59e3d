#include "catalogue/hashing/chunked_file_reader.h"

#include <algorithm>
#include <utility>

#include "catalogue/hashing/game_file.h"

namespace sealkeeper {

ChunkedFileReader::ChunkedFileReader(std::wstring path, std::size_t chunkBytes)
    : path_(std::move(path)), chunkBytes_(chunkBytes) {}

ChunkedFileReader::ChunkedFileReader(std::shared_ptr<const InputFile> file, std::size_t chunkBytes)
    : file_(std::move(file)), chunkBytes_(chunkBytes) {}

bool ChunkedFileReader::Open() {
    GameFile found = OpenGameFile(path_);
    file_ = std::move(found.file);
    if (!file_) {
        return false;
    }
    if (!found.indexedPath.empty()) {
        path_ = std::move(found.indexedPath);
    }
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
    if (!file_) {
        return false;
    }
    const auto wantedBytes =
        static_cast<std::size_t>(std::min<std::uint64_t>(buffer_.size(), expectedBytes_));
    lastReadBytes_ = file_->ReadAt(positionBytes_, std::span(buffer_).first(wantedBytes));
    if (lastReadBytes_ != wantedBytes) {
        return false;
    }
    chunkLength_ = wantedBytes;
    positionBytes_ += wantedBytes;
    expectedBytes_ -= wantedBytes;
    return true;
}

void ChunkedFileReader::SeekTo(std::uint64_t positionBytes) {
    expectedBytes_ = positionBytes_ + expectedBytes_ - positionBytes;
    positionBytes_ = positionBytes;
}

std::span<const std::uint8_t> ChunkedFileReader::Chunk() const {
    return std::span(buffer_).first(chunkLength_);
}

}  // namespace sealkeeper
