#include "catalogue/hashing/chunk_lanes.h"

#include <algorithm>
#include <chrono>

#include "catalogue/hashing/read_ahead_policy.h"
#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_padding.h"

namespace sealkeeper {
namespace {

// The pieces of all lanes stay in the L2 cache, and each is large enough to amortise its read.
constexpr std::size_t kAllPiecesBytes = 524'288;

// A multiple of the block, so that only a chunk's last piece ends inside one.
static_assert(kAllPiecesBytes % (kMaxSha256Lanes * kSha256BlockBytes) == 0);

// Room after a piece for its padding. It also sets the pieces of different lanes apart within a
// page: lanes are read at the same distance from their starts, and what lies a whole number of
// pages apart competes for the same few places in the L1 cache.
constexpr std::size_t kPaddingRoomBytes = 3 * kSha256BlockBytes;

}  // namespace

ChunkLanes::ChunkLanes(const Sha256Engine& engine)
    : engine_(engine),
      pieceBytes_(kAllPiecesBytes / engine.LaneCount()),
      pieces_(new std::uint8_t[engine.LaneCount() * (pieceBytes_ + kPaddingRoomBytes)]) {}

void ChunkLanes::Begin(PendingChunk& chunk) {
    const auto idle = std::find_if(lanes_.begin(), lanes_.end(),
                                   [](const Lane& lane) { return lane.pending == nullptr; });
    *idle = Lane{};
    idle->pending = &chunk;
    std::copy_n(kSha256InitialState, kSha256StateWords, idle->state.begin());
    ++busyCount_;
}

void ChunkLanes::Cancel(const PendingChunk& chunk) {
    for (Lane& lane : lanes_) {
        if (lane.pending == &chunk) {
            lane.pending = nullptr;
            --busyCount_;
        }
    }
}

std::span<PendingChunk* const> ChunkLanes::Advance() {
    endedCount_ = 0;
    ReadPieces();
    Compress();
    EndHashed();
    return std::span(ended_).first(endedCount_);
}

void ChunkLanes::ReadPieces() {
    for (std::size_t lane = 0; lane < engine_.LaneCount(); ++lane) {
        const bool wantsPiece = lanes_[lane].pending != nullptr && lanes_[lane].blockCount == 0;
        if (wantsPiece && !ReadPiece(lane)) {
            End(lanes_[lane], false);
        }
    }
}

// False when not all bytes of the piece can be read.
bool ChunkLanes::ReadPiece(std::size_t lane) {
    Lane& reading = lanes_[lane];
    const ChunkToHash& chunk = reading.pending->chunk;
    const std::span<std::uint8_t> room(pieces_.get() + lane * (pieceBytes_ + kPaddingRoomBytes),
                                       pieceBytes_ + kPaddingRoomBytes);
    const std::size_t wantedBytes = std::min(pieceBytes_, chunk.lengthBytes - reading.readBytes);
    if (wantedBytes > 0) {
        const auto begun = std::chrono::steady_clock::now();
        const std::size_t readBytes =
            chunk.file->ReadAt(chunk.offset + reading.readBytes, room.first(wantedBytes));
        reading.pending->result.waited +=
            ReadAheadPolicy::WaitOf(std::chrono::steady_clock::now() - begun);
        if (readBytes != wantedBytes) {
            return false;
        }
    }
    reading.readBytes += wantedBytes;
    reading.isPadded = reading.readBytes == chunk.lengthBytes;
    reading.blocks = room.data();
    reading.blockCount = reading.isPadded
                             ? AppendSha256Padding(room, wantedBytes, chunk.lengthBytes)
                             : wantedBytes / kSha256BlockBytes;
    return true;
}

void ChunkLanes::Compress() {
    std::array<Sha256Lane, kMaxSha256Lanes> busy{};
    std::size_t busyCount = 0;
    std::size_t blockCount = kAllPiecesBytes;
    for (Lane& lane : lanes_) {
        if (lane.pending != nullptr) {
            busy[busyCount++] = {lane.state.data(), lane.blocks};
            blockCount = std::min(blockCount, lane.blockCount);
        }
    }
    if (busyCount == 0) {
        return;
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
        if (lane.pending != nullptr && lane.isPadded && lane.blockCount == 0) {
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
