#include "catalogue/hashing/file_window.h"

#include <algorithm>
#include <utility>

#include "catalogue/hashing/chunks.h"
#include "platform/file_descriptor.h"

namespace sealkeeper {
namespace {

// Well below 256, the limit on open files on some systems.
constexpr std::size_t kMaxOpenFiles = 64;

// Reserved for other uses: reading a chunk a second time, and the tables of the system's converter.
constexpr std::size_t kSpareDescriptors = 4;

std::size_t FilesToOpenAtOnce(std::size_t fileCount) {
    const std::size_t wanted = std::min(fileCount, kMaxOpenFiles);
    const std::size_t free = wanted > 1 ? CountFreeDescriptors(wanted + kSpareDescriptors) : 0;
    return free > kSpareDescriptors ? free - kSpareDescriptors : 1;
}

}  // namespace

FileWindow::FileWindow(std::size_t fileCount, OpenFile open)
    : fileCount_(fileCount), open_(std::move(open)), maxFiles_(FilesToOpenAtOnce(fileCount)) {}

void FileWindow::OpenNext() {
    files_.push_back({open_(openedCount_), 0});
    ++openedCount_;
}

void FileWindow::RetryCurrent() {
    files_.front().file = open_(CurrentIndex());
}

void FileWindow::StartOver() {
    openedCount_ = CurrentIndex();
    files_.clear();
    OpenNext();
}

std::optional<ChunkToHash> FileWindow::NextChunk() {
    // Only the last file can have chunks left, because the next is opened only when there are none.
    while (files_.back().givenChunks == files_.back().file.chunkCount) {
        if (openedCount_ == fileCount_ || files_.size() == maxFiles_) {
            return std::nullopt;
        }
        OpenNext();
    }
    OpenedFile& last = files_.back();
    const std::uint64_t index = last.givenChunks++;
    lastGivenBytes_ = ChunkLength(index, last.file.sizeBytes);
    return ChunkToHash{last.file.file, ChunkOffset(index, last.file.sizeBytes), lastGivenBytes_};
}

}  // namespace sealkeeper
