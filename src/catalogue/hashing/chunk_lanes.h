// Hashes some chunks in step, one a lane: each is read in short pieces that stay in the processor's
// cache, and all lanes are advanced together.
#ifndef SEALKEEPER_CATALOGUE_HASHING_CHUNK_LANES_H
#define SEALKEEPER_CATALOGUE_HASHING_CHUNK_LANES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "catalogue/hashing/pending_chunk.h"
#include "catalogue/hashing/sha256_engine.h"

namespace sealkeeper {

class ChunkLanes {
  public:
    // `engine` outlives the lanes. The memory for pieces, half a MiB, is allocated here and taken
    // as it is used, so that nothing below allocates.
    explicit ChunkLanes(const Sha256Engine& engine);

    [[nodiscard]] std::size_t IdleCount() const { return engine_.LaneCount() - busyCount_; }
    [[nodiscard]] bool IsIdle() const { return busyCount_ == 0; }

    // Gives an idle lane, of which there is one, `chunk`, which stays where it is until it ended,
    // and reads its first piece. A chunk that cannot be read ends at once.
    void Begin(PendingChunk& chunk);

    // Hashes as many blocks of each busy lane as the one with the fewest has at hand. Chunks that
    // were dropped end, unread.
    void Advance();

    // Ends those that were dropped, and does nothing else.
    void EndDropped();

    // The chunks that ended since the last call of this: they have their results, and their lanes
    // are idle. Good until the next call of any other operation. There is room for one chunk of
    // each lane, so this is called before a lane is begun a second time.
    [[nodiscard]] std::span<PendingChunk* const> TakeEnded();

  private:
    struct Lane {
        // Null when the lane is idle.
        PendingChunk* pending = nullptr;
        std::size_t readBytes = 0;
        // Whole blocks, the padding included once all bytes were read.
        const std::uint8_t* blocks = nullptr;
        std::size_t blockCount = 0;
        bool isPadded = false;
        std::array<std::uint32_t, kSha256StateWords> state{};
    };

    void ReadPiece(Lane& lane);
    [[nodiscard]] bool ReadBytes(Lane& lane, std::span<std::uint8_t> bytes);
    void Compress();
    void EndHashed();
    void End(Lane& lane, bool isRead);

    const Sha256Engine& engine_;
    std::size_t pieceBytes_;
    // Not filled: every byte is read over before it is hashed.
    std::unique_ptr<std::uint8_t[]> pieces_;
    std::array<Lane, kMaxSha256Lanes> lanes_{};
    std::size_t busyCount_ = 0;
    std::array<PendingChunk*, kMaxSha256Lanes> ended_{};
    std::size_t endedCount_ = 0;
};

}  // namespace sealkeeper

#endif
