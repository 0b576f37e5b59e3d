// Hashes chunks as several interleaved streams in one thread: reading each in short pieces that
// stay in the processor's cache, and giving their digests in the order in which they were asked
// for.
#ifndef SEALKEEPER_CATALOGUE_HASHING_CHUNK_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_CHUNK_HASHER_H

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>

#include "catalogue/hashing/sha256_streams.h"
#include "platform/input_file.h"

namespace sealkeeper {

struct ChunkToHash {
    // Open, and stays so until the chunk's digest is taken.
    const InputFile* file = nullptr;
    std::uint64_t offset = 0;
    // May be 0.
    std::size_t lengthBytes = 0;
};

struct HashedChunk {
    // Whether all bytes of the chunk were read. Without them there is no digest.
    bool isRead = false;
    // 0, or the error of the library that made the digest.
    int hashError = 0;
    Sha256Digest digest{};
};

// Where the chunks come from, in order.
class ChunkSource {
  public:
    ChunkSource() = default;
    ChunkSource(const ChunkSource&) = delete;
    ChunkSource& operator=(const ChunkSource&) = delete;
    virtual ~ChunkSource() = default;

    // The next chunk; nothing when there is none for now.
    virtual std::optional<ChunkToHash> NextChunk() = 0;

    // `duration` is what one read of a chunk's bytes took.
    virtual void OnRead(std::chrono::nanoseconds duration) = 0;

    // Not all bytes of `chunk`, given before, could be read.
    virtual void OnUnreadChunk(const ChunkToHash& chunk) = 0;
};

class ChunkHasher {
  public:
    ChunkHasher(ChunkSource& source, std::unique_ptr<Sha256Streams> streams);
    ~ChunkHasher();
    ChunkHasher(const ChunkHasher&) = delete;
    ChunkHasher& operator=(const ChunkHasher&) = delete;

    // The digest of the next chunk of the source, in its order. Hashes on, and ahead, until that
    // one is there. The source must have given it, or give it when asked.
    [[nodiscard]] HashedChunk Take();

    // How many chunks were taken from the source and not yet from here.
    [[nodiscard]] std::size_t PendingCount() const { return pending_.size(); }

  private:
    struct PieceBuffer;
    struct Pending {
        HashedChunk result;
        bool isDone = false;
    };
    // What a stream works on, a piece at a time.
    struct Lane {
        ChunkToHash chunk;
        // Null when the lane is idle.
        Pending* pending = nullptr;
        std::size_t readBytes = 0;
        std::span<const std::uint8_t> unhashed;
    };

    void Advance();
    // Lanes are named by their index.
    bool Prepare(std::size_t lane);
    bool Assign(std::size_t lane);
    bool ReadPiece(std::size_t lane);
    void EndChunk(std::size_t lane);

    ChunkSource& source_;
    std::unique_ptr<Sha256Streams> streams_;
    // One for each lane, once there is something to read.
    std::unique_ptr<PieceBuffer[]> pieces_;
    std::array<Lane, kMaxSha256Streams> lanes_{};
    // In the order of the source. A deque, so that what lanes point to stays where it is.
    std::deque<Pending> pending_;
};

}  // namespace sealkeeper

#endif
