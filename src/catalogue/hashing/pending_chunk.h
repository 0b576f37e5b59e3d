// A chunk that is being hashed, and its result.
#ifndef SEALKEEPER_CATALOGUE_HASHING_PENDING_CHUNK_H
#define SEALKEEPER_CATALOGUE_HASHING_PENDING_CHUNK_H

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "platform/input_file.h"
#include "runtime/sha256.h"

namespace sealkeeper {

struct ChunkToHash {
    // Open; kept open until the chunk is hashed.
    std::shared_ptr<const InputFile> file;
    std::uint64_t offset = 0;
    // May be 0.
    std::size_t lengthBytes = 0;
};

// Whether both are the same open file. Unlike `lock`, this makes no further owner, which might be
// the one that has to close the file.
[[nodiscard]] inline bool IsSameFile(const std::shared_ptr<const InputFile>& file,
                                     const std::weak_ptr<const InputFile>& other) {
    return !file.owner_before(other) && !other.owner_before(file);
}

struct HashedChunk {
    // Whether all bytes of the chunk were read. If not, there is no digest.
    bool isRead = false;
    Sha256Digest digest{};
    // The total of `ReadAheadPolicy::WaitOf` over its reads.
    std::chrono::nanoseconds waited{0};
};

struct PendingChunk {
    explicit PendingChunk(ChunkToHash toHash) : chunk(std::move(toHash)) {}

    ChunkToHash chunk;
    HashedChunk result;
    // Whether `result` is final.
    bool isDone = false;
    // The result is no longer wanted, so no more is read. Set while another thread may work on the
    // chunk.
    std::atomic<bool> isDropped = false;
};

}  // namespace sealkeeper

#endif
