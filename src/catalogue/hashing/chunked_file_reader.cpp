#include "catalogue/hashing/chunked_file_reader.h"

#include <algorithm>
#include <utility>

#include "catalogue/hashing/game_file_index.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

ChunkedFileReader::ChunkedFileReader(std::wstring path, std::size_t chunkBytes)
    : path_(std::move(path)), chunkBytes_(chunkBytes) {}

bool ChunkedFileReader::Open() {
    if (file_.Open(WideToUtf8(path_))) {
        return true;
    }
    std::wstring realPath;
    if (!FindGameFile(ProcessGameFileIndex(), path_, realPath)) {
        return false;
    }
    path_ = realPath;
    return file_.Open(WideToUtf8(path_));
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
    if (!file_.IsOpen()) {
        return false;
    }
    const auto wantedBytes =
        static_cast<std::size_t>(std::min<std::uint64_t>(buffer_.size(), expectedBytes_));
    lastReadBytes_ = file_.ReadAt(positionBytes_, std::span(buffer_).first(wantedBytes));
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
