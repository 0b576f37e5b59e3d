#include "catalogue/hashing/file_hasher.h"

#include <algorithm>
#include <utility>

namespace sealkeeper {
namespace {

// The look-ahead: this many chunks are kept pending, per lane but at least the second number in
// all. Each lane hashes one while the disk fetches another.
constexpr std::size_t kChunksPerLane = 2;
constexpr std::size_t kLeastChunks = 16;

// The same for small chunks: it takes many of them to keep a disk busy. `AddChunksAhead` says when
// they are added.
constexpr std::size_t kSmallChunksPerLane = 4;
constexpr std::size_t kLeastSmallChunks = 64;
constexpr std::size_t kSmallChunkBytes = 1'048'576;

}  // namespace

FileHasher::FileHasher(std::size_t fileCount, OpenFile open, std::unique_ptr<ChunkHasher> chunks)
    : window_(fileCount, std::move(open)), chunks_(std::move(chunks)) {}

const FileToHash& FileHasher::NextFile() {
    if (!window_.IsEmpty()) {
        chunks_->Drop(static_cast<std::size_t>(window_.GivenOfCurrent() - takenChunks_));
        window_.PopCurrent();
    }
    takenChunks_ = 0;
    isKnownUnchanged_ = false;
    if (window_.IsEmpty()) {
        window_.OpenNext();
        return window_.Current();
    }
    if (!window_.Current().file) {
        // The file may exist by now.
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

// Also drops all chunks of later files: the chunks of this file must come first again. Changes are
// rare, so the lost work does not matter.
const FileToHash& FileHasher::OpenFileAgain() {
    chunks_->Drop(chunks_->PendingCount());
    window_.StartOver();
    takenChunks_ = 0;
    isKnownUnchanged_ = false;
    return window_.Current();
}

// Most files have one chunk. It is awaited first, so that a single check of the status covers every
// change up to then.
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

// Where this thread hashes, many small chunks are added at a time: opening files one after the
// other is faster than between reading others, because the processor's caches keep what the system
// needs for it. Where other threads hash, they hash while this one opens, so the chunks are added
// as soon as there is room.
void FileHasher::AddChunksAhead() {
    if (!chunks_->HashesInBackground() && chunks_->PendingCount() >= WantedChunks()) {
        return;
    }
    while (HasRoom()) {
        auto chunk = window_.NextChunk();
        if (!chunk) {
            return;
        }
        if (advice_.TakeSteps(InputFile::ReadAheadSteps(chunk->lengthBytes))) {
            chunk->file->ReadAhead(chunk->offset, chunk->lengthBytes);
        }
        chunks_->Add(std::move(*chunk));
    }
}

std::size_t FileHasher::WantedChunks() const {
    return std::max(kChunksPerLane * chunks_->LaneCount(), kLeastChunks);
}

bool FileHasher::HasRoom() const {
    const std::size_t pending = chunks_->PendingCount();
    return pending < WantedChunks() ||
           (pending < std::max(kSmallChunksPerLane * chunks_->LaneCount(), kLeastSmallChunks) &&
            window_.LastGivenBytes() <= kSmallChunkBytes);
}

}  // namespace sealkeeper
