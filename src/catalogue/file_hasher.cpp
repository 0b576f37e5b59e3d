#include "catalogue/file_hasher.h"

#include <algorithm>
#include <utility>

#include "catalogue/catalogue_format.h"

namespace sealkeeper {
namespace {

// Well below the 256 files that some systems let a process have open.
constexpr std::size_t kMaxFilesAhead = 64;
constexpr std::size_t kMaxChunksAhead = 64;

}  // namespace

std::uint64_t ChunkCountOf(std::uint64_t sizeBytes) {
    return sizeBytes / kChunkBytes + (sizeBytes % kChunkBytes != 0 ? 1 : 0);
}

std::uint64_t ChunkOffset(std::uint64_t index, std::uint64_t sizeBytes) {
    return index < sizeBytes / kChunkBytes + 1 ? std::min(index * kChunkBytes, sizeBytes)
                                               : sizeBytes;
}

FileHasher::FileHasher(std::size_t fileCount, OpenFile open)
    : fileCount_(fileCount), open_(std::move(open)), chunks_(*this) {}

FileToHash& FileHasher::NextFile() {
    if (hasCurrentFile_) {
        GiveUpCurrentFile();
    }
    if (files_.empty()) {
        OpenNextFile();
    }
    hasCurrentFile_ = true;
    return files_.front().file;
}

HashedChunk FileHasher::NextDigest() {
    ++files_.front().takenChunks;
    return chunks_.Take();
}

std::optional<ChunkToHash> FileHasher::NextChunk() {
    if (chunks_.PendingCount() >= kMaxChunksAhead) {
        return std::nullopt;
    }
    while (files_.empty() || files_.back().givenChunks == files_.back().file.chunkCount) {
        if (openedCount_ == fileCount_ || files_.size() >= kMaxFilesAhead || !OpenFileAhead()) {
            return std::nullopt;
        }
    }
    FileAhead& ahead = files_.back();
    const std::uint64_t sizeBytes = ahead.file.sizeBytes;
    const std::uint64_t offset = ChunkOffset(ahead.givenChunks, sizeBytes);
    ++ahead.givenChunks;
    return ChunkToHash{
        &ahead.file.reader->File(), offset,
        static_cast<std::size_t>(std::min<std::uint64_t>(sizeBytes - offset, kChunkBytes))};
}

void FileHasher::OpenNextFile() {
    files_.push_back({open_(openedCount_), 0, 0});
    ++openedCount_;
    isAheadBlocked_ = false;
}

bool FileHasher::OpenFileAhead() {
    if (isAheadBlocked_) {
        return false;
    }
    FileToHash file = open_(openedCount_);
    // Perhaps only because so many are open: it is opened again once it is the only one.
    isAheadBlocked_ = !file.reader && !files_.empty();
    if (isAheadBlocked_) {
        return false;
    }
    files_.push_back({std::move(file), 0, 0});
    ++openedCount_;
    return true;
}

void FileHasher::GiveUpCurrentFile() {
    FileAhead& current = files_.front();
    // No more of its chunks are begun; those that were must end before the file is closed.
    current.file.chunkCount = current.givenChunks;
    while (current.takenChunks < current.givenChunks) {
        static_cast<void>(NextDigest());
    }
    files_.pop_front();
    hasCurrentFile_ = false;
}

}  // namespace sealkeeper
