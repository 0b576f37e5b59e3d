// Hashes several chunks at a time and returns their digests in the order in which the chunks were
// added.
#ifndef SEALKEEPER_CATALOGUE_HASHING_CHUNK_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_CHUNK_HASHER_H

#include <cstddef>

#include "catalogue/hashing/pending_chunk.h"

namespace sealkeeper {

// After a chunk that cannot be read, chunks of the same file that were not begun yet wait until
// they are the oldest (unread_file.h).
//
// Lack of memory is an exception; after one, the hasher can only be destroyed.
class ChunkHasher {
  public:
    ChunkHasher() = default;
    ChunkHasher(const ChunkHasher&) = delete;
    ChunkHasher& operator=(const ChunkHasher&) = delete;
    virtual ~ChunkHasher() = default;

    // How many chunks can be hashed at a time.
    [[nodiscard]] virtual std::size_t LaneCount() const = 0;

    // Whether other threads hash while the caller's does something else.
    [[nodiscard]] virtual bool HashesInBackground() const = 0;

    // Adds a chunk. When it is hashed is up to the hasher.
    virtual void Add(ChunkToHash chunk) = 0;

    // How many chunks were added and neither taken nor dropped.
    [[nodiscard]] virtual std::size_t PendingCount() const = 0;

    // Waits until the oldest pending chunk is done. There must be one.
    virtual void AwaitOldest() = 0;

    // Waits for the oldest pending chunk, removes it and returns its result. There must be one.
    [[nodiscard]] virtual HashedChunk Take() = 0;

    // Drops the oldest `count` pending chunks, at most `PendingCount`. Those not yet begun never
    // are.
    virtual void Drop(std::size_t count) = 0;
};

}  // namespace sealkeeper

#endif
