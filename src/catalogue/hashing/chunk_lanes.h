// Hashes chunks in parallel lanes, one chunk each. Each chunk is read in short pieces that stay in
// the processor's cache, and all lanes advance together.
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
    // `engine` must outlive the lanes. The half MiB for pieces is allocated here. Once `engine` is
    // prepared, nothing below allocates.
    explicit ChunkLanes(const Sha256Engine& engine);

    [[nodiscard]] std::size_t LaneCount() const { return engine_.LaneCount(); }
    [[nodiscard]] std::size_t IdleCount() const { return LaneCount() - busyCount_; }
    [[nodiscard]] bool IsIdle() const { return busyCount_ == 0; }

    // Assigns `chunk` to an idle lane and reads its first piece. There must be an idle lane, and
    // `chunk` must not move until it has ended. A chunk that cannot be read ends at once.
    void Begin(PendingChunk& chunk);

    // Advances all busy lanes by the blocks of the shortest one. Chunks that were dropped end as
    // not read.
    void Advance();

    // Ends the chunks that were dropped, and does nothing else.
    void EndDropped();

    // The chunks that ended since the last call: they have their results, and their lanes are idle.
    // Valid until the next call of any other operation. Between two calls, at most as many chunks
    // may be begun as lanes were idle, because there is room for one ended chunk per lane.
    [[nodiscard]] std::span<PendingChunk* const> TakeEnded();

  private:
    struct PieceDeleter {
        void operator()(std::uint8_t* pieces) const;
    };

    struct Lane {
        // Null when the lane is idle.
        PendingChunk* pending = nullptr;
        std::size_t readBytes = 0;
        // The whole blocks that are yet to be hashed, with the padding once all bytes were read.
        const std::uint8_t* blocks = nullptr;
        std::size_t blockCount = 0;
        std::array<std::uint32_t, kSha256StateWords> state{};
    };

    // Room for the piece of one lane and its padding.
    [[nodiscard]] std::size_t RoomBytes() const;
    void ReadPiece(Lane& lane);
    [[nodiscard]] bool ReadBytes(Lane& lane, std::span<std::uint8_t> bytes);
    void Compress();
    void EndHashed();
    void End(Lane& lane, bool isRead);

    const Sha256Engine& engine_;
    std::size_t pieceBytes_;
    // Uninitialised: every byte is overwritten by a read before it is hashed.
    std::unique_ptr<std::uint8_t[], PieceDeleter> pieces_;
    std::array<Lane, kMaxSha256Lanes> lanes_{};
    std::size_t busyCount_ = 0;
    std::array<PendingChunk*, kMaxSha256Lanes> ended_{};
    std::size_t endedCount_ = 0;
};

}  // namespace sealkeeper

#endif
