#include "catalogue/hashing/file_hasher.h"

#include <algorithm>
#include <utility>

#include "catalogue/hashing/chunks.h"
#include "platform/file_descriptor.h"

namespace sealkeeper {
namespace {

// Well below the 256 files that some systems let a process have open.
constexpr std::size_t kMaxOpenFiles = 64;

// Left for what else is opened beside the files: the second reading of a chunk, the tables of the
// system's converter.
constexpr std::size_t kSpareDescriptors = 4;

// How much the system is told to bring in, into its own memory: what a fast disk delivers in some
// hundredths of a second, so that it does not stand still while the processor does something else.
constexpr std::uint64_t kMaxBytesAhead = std::uint64_t{64} << 20U;

// Chunks behind the end of a file have no bytes and take no time, and a catalogue can list any
// number of them: without a limit all would be done while the first chunk is being hashed.
constexpr std::size_t kMaxChunksAhead = 64;

std::size_t FilesToOpenAtOnce(std::size_t fileCount) {
    const std::size_t wanted = std::min(fileCount, kMaxOpenFiles);
    const std::size_t free = wanted > 1 ? CountFreeDescriptors(wanted + kSpareDescriptors) : 0;
    return free > kSpareDescriptors ? free - kSpareDescriptors : 1;
}

}  // namespace

FileHasher::FileHasher(std::size_t fileCount, OpenFile open, std::unique_ptr<Sha256Streams> streams)
    : fileCount_(fileCount),
      open_(std::move(open)),
      maxOpenFiles_(FilesToOpenAtOnce(fileCount)),
      chunks_(*this, std::move(streams)) {}

const FileToHash& FileHasher::NextFile() {
    again_.reset();
    if (hasCurrentFile_) {
        GiveUpCurrentFile();
    }
    const bool isOpenedAhead = !files_.empty();
    if (!isOpenedAhead) {
        OpenNextFile();
    }
    hasCurrentFile_ = true;
    FileAhead& current = files_.front();
    return isOpenedAhead && IsOutdated(current) ? OpenCurrentFileAgain() : current.file;
}

HashedChunk FileHasher::NextDigest() {
    if (again_) {
        return again_->NextDigest();
    }
    FileAhead& current = files_.front();
    if (current.takenChunks == current.file.chunkCount) {
        return {};
    }
    ++current.takenChunks;
    return chunks_.Take();
}

std::optional<ChunkToHash> FileHasher::NextChunk() {
    if (chunks_.PendingCount() >= kMaxChunksAhead) {
        return std::nullopt;
    }
    LookAhead();
    FileAhead* const ahead = FileToGiveFrom();
    if (ahead == nullptr) {
        return std::nullopt;
    }
    const std::uint64_t index = ahead->givenChunks++;
    const std::size_t lengthBytes = ChunkLength(index, ahead->file.sizeBytes);
    bytesAhead_ -= lengthBytes;
    --chunksAhead_;
    return ChunkToHash{&ahead->file.reader->File(), ChunkOffset(index, ahead->file.sizeBytes),
                       lengthBytes};
}

void FileHasher::OnUnreadChunk(const ChunkToHash& chunk) {
    const auto unread = std::find_if(files_.begin(), files_.end(), [&](const FileAhead& ahead) {
        return ahead.file.reader && &ahead.file.reader->File() == chunk.file;
    });
    unread->hasUnreadChunk = true;
}

// Null when there is none for now.
FileHasher::FileAhead* FileHasher::FileToGiveFrom() {
    while (givenFiles_ < files_.size() &&
           files_[givenFiles_].givenChunks == files_[givenFiles_].file.chunkCount) {
        ++givenFiles_;
    }
    if (givenFiles_ == files_.size()) {
        return nullptr;
    }
    FileAhead& ahead = files_[givenFiles_];
    // A chunk that cannot be read mostly ends its file, and to try the others may take long.
    return ahead.hasUnreadChunk && ahead.givenChunks >= ahead.takenChunks ? nullptr : &ahead;
}

// Opens what comes next, and tells the system of its chunks, so that it can read them meanwhile,
// unless it seems to have them in memory.
void FileHasher::LookAhead() {
    while (bytesAhead_ < kMaxBytesAhead && chunksAhead_ < kMaxChunksAhead) {
        FileAhead& last = files_.back();
        if (last.seenChunks < last.file.chunkCount) {
            LookAtNextChunk(last);
        } else if (openedCount_ < fileCount_ && files_.size() < maxOpenFiles_) {
            OpenNextFile();
        } else {
            return;
        }
    }
}

void FileHasher::LookAtNextChunk(FileAhead& ahead) {
    const std::uint64_t index = ahead.seenChunks++;
    const std::size_t lengthBytes = ChunkLength(index, ahead.file.sizeBytes);
    if (advice_.ShouldAdvise(InputFile::ReadAheadSteps(lengthBytes))) {
        ahead.file.reader->File().ReadAhead(ChunkOffset(index, ahead.file.sizeBytes), lengthBytes);
    }
    bytesAhead_ += lengthBytes;
    ++chunksAhead_;
}

void FileHasher::OpenNextFile() {
    FileAhead& ahead = files_.emplace_back();
    ahead.openedAt = Clock::now();
    ahead.file = open_(openedCount_);
    ++openedCount_;
}

// Whether to open a file again that was opened ahead. Its status tells of what was done to it, its
// removal and its replacement by another included. Unseen goes what is done to the directories and
// links on the way to it, what is written through a mapping of a page that has been written to
// before, and what keeps the size within the same tick of the file system's clock.
bool FileHasher::IsOutdated(const FileAhead& ahead) {
    if (!ahead.file.reader) {
        return true;
    }
    return Clock::now() - ahead.openedAt > kFreshTime &&
           ahead.file.reader->File().Status() != ahead.file.status;
}

const FileToHash& FileHasher::OpenCurrentFileAgain() {
    const std::size_t index = openedCount_ - files_.size();
    GiveUpCurrentFile();
    again_ = std::make_unique<FileHasher>(1, [this, index](std::size_t) { return open_(index); });
    return again_->NextFile();
}

void FileHasher::GiveUpCurrentFile() {
    FileAhead& current = files_.front();
    const std::uint64_t sizeBytes = current.file.sizeBytes;
    bytesAhead_ -=
        ChunkOffset(current.seenChunks, sizeBytes) - ChunkOffset(current.givenChunks, sizeBytes);
    chunksAhead_ -= current.seenChunks - current.givenChunks;
    // No more of its chunks are begun; those that were must end before the file is closed.
    current.seenChunks = current.givenChunks;
    current.file.chunkCount = current.givenChunks;
    while (current.takenChunks < current.givenChunks) {
        static_cast<void>(NextDigest());
    }
    files_.pop_front();
    givenFiles_ -= givenFiles_ > 0 ? 1 : 0;
    hasCurrentFile_ = false;
}

}  // namespace sealkeeper
