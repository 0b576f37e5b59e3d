#include "catalogue/chunked_file_reader.h"

#include <algorithm>
#include <utility>

#include "platform/text_encoding.h"

namespace sealkeeper {

ChunkedFileReader::ChunkedFileReader(std::wstring path, std::size_t chunkBytes)
    : path_(std::move(path)), chunkBytes_(chunkBytes) {}

bool ChunkedFileReader::Open() {
    stream_.reset(std::fopen(WideToUtf8(path_).c_str(), "rb"));
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
    if (!stream_) {
        return false;
    }
    const auto wantedBytes =
        static_cast<std::size_t>(std::min<std::uint64_t>(buffer_.size(), expectedBytes_));
    // fread loops over short reads and stops at the end of the file or an error.
    if (std::fread(buffer_.data(), 1, wantedBytes, stream_.get()) != wantedBytes) {
        return false;
    }
    lastChunkBytes_ = wantedBytes;
    positionBytes_ += wantedBytes;
    expectedBytes_ -= wantedBytes;
    return true;
}

std::span<const std::uint8_t> ChunkedFileReader::Chunk() const {
    return std::span(buffer_).first(lastChunkBytes_);
}

}  // namespace sealkeeper
