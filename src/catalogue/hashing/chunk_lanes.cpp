#include "catalogue/hashing/chunk_lanes.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <new>
#include <utility>

#include "catalogue/hashing/read_ahead_policy.h"
#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_padding.h"

namespace sealkeeper {
namespace {

// The pieces of all lanes together take at most half of the L2 cache of recent processors, and are
// no slower where they take all of it (bench/RESULTS.md). Each is large enough to amortise its
// read.
constexpr std::size_t kAllPiecesBytes = 524'288;

// Whole blocks, so that only the last piece of a chunk can end inside a block.
std::size_t PieceBytes(std::size_t laneCount) {
    return kAllPiecesBytes / laneCount / kSha256BlockBytes * kSha256BlockBytes;
}

// Room after a piece for its padding. It also staggers the pieces of the lanes: all lanes are read
// at the same offset, and addresses a whole number of pages apart compete for the same L1 cache
// set.
constexpr std::size_t kPaddingRoomBytes = 3 * kSha256BlockBytes;

// A block is as long as the cache line of most processors. Neither copying into aligned blocks nor
// loading them takes two lines at a time.
constexpr std::align_val_t kPieceAlignment{kSha256BlockBytes};
static_assert(kPaddingRoomBytes % kSha256BlockBytes == 0 &&
              kPaddingRoomBytes >= kMaxSha256PaddingBytes);

}  // namespace

ChunkLanes::ChunkLanes(const Sha256Engine& engine)
    : engine_(engine),
      pieceBytes_(PieceBytes(engine.LaneCount())),
      pieces_(new (kPieceAlignment) std::uint8_t[engine.LaneCount() * RoomBytes()]) {}

std::size_t ChunkLanes::RoomBytes() const {
    return pieceBytes_ + kPaddingRoomBytes;
}

void ChunkLanes::PieceDeleter::operator()(std::uint8_t* pieces) const {
    ::operator delete[](pieces, kPieceAlignment);
}

void ChunkLanes::Begin(PendingChunk& chunk) {
    const auto idle = std::find_if(lanes_.begin(), lanes_.end(),
                                   [](const Lane& lane) { return lane.pending == nullptr; });
    *idle = Lane{};
    idle->pending = &chunk;
    std::copy_n(kSha256InitialState, kSha256StateWords, idle->state.begin());
    ++busyCount_;
    ReadPiece(*idle);
}

void ChunkLanes::Advance() {
    EndDropped();
    for (Lane& lane : lanes_) {
        if (lane.pending != nullptr && lane.blockCount == 0) {
            ReadPiece(lane);
        }
    }
    Compress();
    EndHashed();
}

void ChunkLanes::EndDropped() {
    for (Lane& lane : lanes_) {
        if (lane.pending != nullptr && lane.pending->isDropped) {
            End(lane, false);
        }
    }
}

std::span<PendingChunk* const> ChunkLanes::TakeEnded() {
    return std::span(ended_).first(std::exchange(endedCount_, 0));
}

// Reads the next piece of a chunk and pads the last one. Ends the chunk when not all of the piece
// can be read.
void ChunkLanes::ReadPiece(Lane& lane) {
    const std::size_t chunkBytes = lane.pending->chunk.lengthBytes;
    const auto index = static_cast<std::size_t>(&lane - lanes_.data());
    const std::span<std::uint8_t> room(pieces_.get() + index * RoomBytes(), RoomBytes());
    const auto piece = room.first(std::min(pieceBytes_, chunkBytes - lane.readBytes));
    if (!ReadBytes(lane, piece)) {
        End(lane, false);
        return;
    }
    lane.readBytes += piece.size();
    lane.blocks = room.data();
    lane.blockCount = lane.readBytes == chunkBytes
                          ? AppendSha256Padding(room, piece.size(), chunkBytes)
                          : piece.size() / kSha256BlockBytes;
}

// Reads the next bytes of the lane's chunk. False when not all of them can be read.
bool ChunkLanes::ReadBytes(Lane& lane, std::span<std::uint8_t> bytes) {
    const ChunkToHash& chunk = lane.pending->chunk;
    const auto begun = std::chrono::steady_clock::now();
    const std::size_t readBytes = chunk.file->ReadAt(chunk.offset + lane.readBytes, bytes);
    lane.pending->result.waited +=
        ReadAheadPolicy::WaitOf(std::chrono::steady_clock::now() - begun);
    return readBytes == bytes.size();
}

void ChunkLanes::Compress() {
    std::array<Sha256Lane, kMaxSha256Lanes> busy{};
    std::size_t busyCount = 0;
    std::size_t blockCount = std::numeric_limits<std::size_t>::max();
    for (Lane& lane : lanes_) {
        if (lane.pending != nullptr) {
            busy[busyCount++] = {lane.state.data(), lane.blocks};
            blockCount = std::min(blockCount, lane.blockCount);
        }
    }
    engine_.Compress(std::span(busy).first(busyCount), blockCount);
    for (Lane& lane : lanes_) {
        if (lane.pending != nullptr) {
            lane.blocks += blockCount * kSha256BlockBytes;
            lane.blockCount -= blockCount;
        }
    }
}

void ChunkLanes::EndHashed() {
    for (Lane& lane : lanes_) {
        if (lane.pending != nullptr && lane.blockCount == 0 &&
            lane.readBytes == lane.pending->chunk.lengthBytes) {
            lane.pending->result.digest = DigestOf(lane.state);
            End(lane, true);
        }
    }
}

void ChunkLanes::End(Lane& lane, bool isRead) {
    lane.pending->result.isRead = isRead;
    ended_[endedCount_++] = lane.pending;
    lane.pending = nullptr;
    --busyCount_;
}

}  // namespace sealkeeper
