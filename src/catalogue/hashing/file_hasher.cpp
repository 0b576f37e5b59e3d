#include "catalogue/hashing/file_hasher.h"

#include <algorithm>
#include <utility>

namespace sealkeeper {
namespace {

// How many chunks are pending at most, for each lane and however few lanes there are. A lane works
// on one, and the disk meanwhile brings another.
constexpr std::size_t kChunksPerLane = 2;
constexpr std::size_t kLeastChunks = 16;

// The same where they are small: many of them together keep a disk busy, and lanes run empty where
// few are at hand.
constexpr std::size_t kSmallChunksPerLane = 4;
constexpr std::size_t kLeastSmallChunks = 64;
constexpr std::size_t kSmallChunkBytes = 1'048'576;

}  // namespace

FileHasher::FileHasher(std::size_t fileCount, OpenFile open, std::unique_ptr<ChunkHasher> chunks)
    : window_(fileCount, std::move(open)), chunks_(std::move(chunks)) {}

const FileToHash& FileHasher::NextFile() {
    if (hasCurrentFile_) {
        chunks_->Drop(static_cast<std::size_t>(window_.GivenOfCurrent() - takenChunks_));
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
    if (current.file->Status() != current.status) {
        return false;
    }
    isKnownUnchanged_ = isWhole;
    return true;
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
    const std::size_t pending = chunks_->PendingCount();
    return pending < std::max(kChunksPerLane * lanes, kLeastChunks) ||
           (pending < std::max(kSmallChunksPerLane * lanes, kLeastSmallChunks) &&
            window_.LastGivenBytes() <= kSmallChunkBytes);
}

}  // namespace sealkeeper
