// Hashes chunks, several at a time, and gives their digests back in the order in which they were
// added.
#ifndef SEALKEEPER_CATALOGUE_HASHING_CHUNK_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_CHUNK_HASHER_H

#include <cstddef>

#include "catalogue/hashing/pending_chunk.h"

namespace sealkeeper {

// After a chunk that cannot be read, those of the same file that were not begun yet wait until they
// are the oldest: most likely they cannot be read, either, and each try may take long.
class ChunkHasher {
  public:
    ChunkHasher() = default;
    ChunkHasher(const ChunkHasher&) = delete;
    ChunkHasher& operator=(const ChunkHasher&) = delete;
    virtual ~ChunkHasher() = default;

    // How many chunks can be hashed at a time.
    [[nodiscard]] virtual std::size_t LaneCount() const = 0;

    // Takes in a chunk, which is hashed sooner or later.
    virtual void Add(ChunkToHash chunk) = 0;

    // The chunks that were added and neither taken nor dropped.
    [[nodiscard]] virtual std::size_t PendingCount() const = 0;

    // Returns once the oldest pending chunk, of which there is one, is done.
    virtual void AwaitOldest() = 0;

    // The result of the oldest pending chunk, awaited.
    [[nodiscard]] virtual HashedChunk Take() = 0;

    // Gives up the oldest `count` pending chunks. What was not begun of them never is.
    virtual void Drop(std::size_t count) = 0;
};

}  // namespace sealkeeper

#endif
