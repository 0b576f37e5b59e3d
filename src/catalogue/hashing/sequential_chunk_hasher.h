// Hashes chunks in the caller's thread.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SEQUENTIAL_CHUNK_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_SEQUENTIAL_CHUNK_HASHER_H

#include <cstddef>
#include <deque>

#include "catalogue/hashing/chunk_hasher.h"
#include "catalogue/hashing/chunk_lanes.h"
#include "catalogue/hashing/unread_file.h"

namespace sealkeeper {

class SequentialChunkHasher : public ChunkHasher {
  public:
    explicit SequentialChunkHasher(const Sha256Engine& engine);

    [[nodiscard]] std::size_t LaneCount() const override;
    [[nodiscard]] bool HashesInBackground() const override { return false; }
    void Add(ChunkToHash chunk) override;
    [[nodiscard]] std::size_t PendingCount() const override;
    void AwaitOldest() override;
    [[nodiscard]] HashedChunk Take() override;
    void Drop(std::size_t count) override;

  private:
    void BeginWaiting();
    void NoteEnded();
    void PopOldest();

    ChunkLanes lanes_;
    // Oldest first. A deque, so that the chunks that lanes point to do not move.
    std::deque<PendingChunk> pending_;
    // How many of the pending chunks were begun; these are the oldest.
    std::size_t begunCount_ = 0;
    UnreadFile unreadFile_;
};

}  // namespace sealkeeper

#endif
