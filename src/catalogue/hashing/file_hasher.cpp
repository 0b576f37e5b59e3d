#include "catalogue/hashing/file_hasher.h"

#include <algorithm>
#include <utility>

#include "catalogue/hashing/chunks.h"

namespace sealkeeper {
namespace {

// For each lane, how many chunks and how many bytes are pending at most. A lane works on one chunk,
// and the disk meanwhile brings another. Small files want more: many of them together keep a disk
// busy, and lanes run empty where few are at hand.
constexpr std::size_t kChunksPerLane = 4;
constexpr std::uint64_t kBytesPerLane = 2 * kChunkBytes;

// The same for all lanes together, however few there are.
constexpr std::size_t kLeastPendingChunks = 64;
constexpr std::uint64_t kLeastPendingBytes = 16 * kChunkBytes;

}  // namespace

FileHasher::FileHasher(std::size_t fileCount, OpenFile open, std::unique_ptr<ChunkHasher> chunks)
    : window_(fileCount, std::move(open)), chunks_(std::move(chunks)) {}

const FileToHash& FileHasher::NextFile() {
    if (hasCurrentFile_) {
        chunks_->Drop(window_.GivenOfCurrent() - takenChunks_);
        window_.PopCurrent();
    }
    hasCurrentFile_ = true;
    takenChunks_ = 0;
    isKnownUnchanged_ = false;
    if (window_.IsEmpty()) {
        window_.OpenNext();
        return window_.Current();
    }
    if (!window_.Current().file) {
        // It may be there by now.
        window_.RetryCurrent();
        return window_.Current().file ? OpenFileAgain() : window_.Current();
    }
    return IsAsItWasOpened() ? window_.Current() : OpenFileAgain();
}

HashedChunk FileHasher::NextDigest() {
    if (takenChunks_ == window_.Current().chunkCount) {
        return {};
    }
    AddChunksAhead();
    ++takenChunks_;
    const HashedChunk chunk = chunks_->Take();
    advice_.Earn(chunk.waited);
    return chunk;
}

bool FileHasher::HasFileChanged() const {
    const FileToHash& current = window_.Current();
    return current.chunkCount > 0 && !isKnownUnchanged_ && current.file->Status() != current.status;
}

// What was read ahead of the file goes, too: its chunks come first now, and that it changes is
// rare.
const FileToHash& FileHasher::OpenFileAgain() {
    chunks_->Drop(chunks_->PendingCount());
    window_.StartOver();
    takenChunks_ = 0;
    isKnownUnchanged_ = false;
    return window_.Current();
}

// Most files have one chunk. It is waited for first, so that one look at the file's status is
// enough for all that happened to it until then.
bool FileHasher::IsAsItWasOpened() {
    const FileToHash& current = window_.Current();
    const bool isWhole = current.chunkCount == 1;
    if (isWhole) {
        AddChunksAhead();
        chunks_->AwaitOldest();
    }
    const bool isUnchanged = current.file->Status() == current.status;
    isKnownUnchanged_ = isWhole && isUnchanged;
    return isUnchanged;
}

void FileHasher::AddChunksAhead() {
    while (HasRoom()) {
        auto chunk = window_.NextChunk();
        if (!chunk) {
            return;
        }
        if (advice_.ShouldAdvise(InputFile::ReadAheadSteps(chunk->lengthBytes))) {
            chunk->file->ReadAhead(chunk->offset, chunk->lengthBytes);
        }
        chunks_->Add(std::move(*chunk));
    }
}

bool FileHasher::HasRoom() const {
    const std::size_t lanes = chunks_->LaneCount();
    if (chunks_->PendingCount() >= std::max(kChunksPerLane * lanes, kLeastPendingChunks)) {
        return false;
    }
    const std::uint64_t takenBytes = ChunkOffset(takenChunks_, window_.Current().sizeBytes);
    return window_.GivenBytes() - takenBytes < std::max(kBytesPerLane * lanes, kLeastPendingBytes);
}

}  // namespace sealkeeper
