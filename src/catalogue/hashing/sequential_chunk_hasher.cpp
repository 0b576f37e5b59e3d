#include "catalogue/hashing/sequential_chunk_hasher.h"

#include <algorithm>
#include <utility>

namespace sealkeeper {

SequentialChunkHasher::SequentialChunkHasher(const Sha256Engine& engine) : lanes_(engine) {}

std::size_t SequentialChunkHasher::LaneCount() const {
    return lanes_.LaneCount();
}

void SequentialChunkHasher::Add(ChunkToHash chunk) {
    pending_.emplace_back(std::move(chunk));
}

std::size_t SequentialChunkHasher::PendingCount() const {
    return pending_.size();
}

void SequentialChunkHasher::AwaitOldest() {
    while (!pending_.front().isDone) {
        BeginWaiting();
        lanes_.Advance();
        NoteEnded();
    }
}

HashedChunk SequentialChunkHasher::Take() {
    AwaitOldest();
    const HashedChunk result = pending_.front().result;
    PopOldest();
    return result;
}

void SequentialChunkHasher::Drop(std::size_t count) {
    for (std::size_t index = 0; index < std::min(count, begunCount_); ++index) {
        pending_[index].isDropped = true;
    }
    lanes_.EndDropped();
    NoteEnded();
    for (; count > 0; --count) {
        PopOldest();
    }
}

void SequentialChunkHasher::BeginWaiting() {
    while (begunCount_ < pending_.size() && lanes_.IdleCount() > 0) {
        PendingChunk& next = pending_[begunCount_];
        if (begunCount_ > 0 && unreadFile_.HoldsBack(next.chunk)) {
            return;
        }
        ++begunCount_;
        lanes_.Begin(next);
        NoteEnded();
    }
}

void SequentialChunkHasher::NoteEnded() {
    for (PendingChunk* const ended : lanes_.TakeEnded()) {
        ended->isDone = true;
        unreadFile_.Note(*ended);
    }
}

void SequentialChunkHasher::PopOldest() {
    pending_.pop_front();
    begunCount_ -= begunCount_ > 0 ? 1 : 0;
}

}  // namespace sealkeeper
