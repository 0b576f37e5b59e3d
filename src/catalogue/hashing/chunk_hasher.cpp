#include "catalogue/hashing/chunk_hasher.h"

#include <algorithm>
#include <utility>

namespace sealkeeper {
namespace {

// Small enough that what was just read, with the pieces of the other lanes, has not gone back to
// main memory, and large enough that the system calls do not count. A multiple of the block, so
// that only a chunk's last piece ends inside one.
constexpr std::size_t kPieceBytes = 131'072;
static_assert(kPieceBytes % kSha256BlockBytes == 0);

// A multiple of the cache lines of all processors: the system copies a piece more slowly to where
// no line begins.
constexpr std::size_t kPieceAlignment = 4096;
static_assert(kPieceBytes % kPieceAlignment == 0);

}  // namespace

struct alignas(kPieceAlignment) ChunkHasher::PieceBuffer {
    std::array<std::uint8_t, kPieceBytes> bytes;
};

ChunkHasher::ChunkHasher(ChunkSource& source, std::unique_ptr<Sha256Streams> streams)
    : source_(source), streams_(std::move(streams)) {}

ChunkHasher::~ChunkHasher() = default;

HashedChunk ChunkHasher::Take() {
    while (pending_.empty() || !pending_.front().isDone) {
        Advance();
    }
    const HashedChunk result = pending_.front().result;
    pending_.pop_front();
    return result;
}

// Hashes as many blocks of all busy lanes as the one with the fewest has.
void ChunkHasher::Advance() {
    std::array<Sha256Step, kMaxSha256Streams> steps{};
    std::size_t stepCount = 0;
    std::size_t blockCount = kPieceBytes / kSha256BlockBytes;
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        if (Prepare(lane)) {
            const auto unhashed = lanes_[lane].unhashed;
            steps[stepCount++] = {lane, unhashed.data()};
            blockCount = std::min(blockCount, unhashed.size() / kSha256BlockBytes);
        }
    }
    if (stepCount == 0) {
        return;
    }
    const auto busy = std::span(steps).first(stepCount);
    streams_->Take(busy, blockCount);
    for (const Sha256Step& step : busy) {
        auto& unhashed = lanes_[step.stream].unhashed;
        unhashed = unhashed.subspan(blockCount * kSha256BlockBytes);
    }
}

// Sees to it that the lane has whole blocks to hash. False when there are no more chunks for it.
bool ChunkHasher::Prepare(std::size_t lane) {
    while (lanes_[lane].unhashed.size() < kSha256BlockBytes) {
        if (lanes_[lane].pending == nullptr) {
            if (!Assign(lane)) {
                return false;
            }
        } else if (!ReadPiece(lane)) {
            EndChunk(lane);
        }
    }
    return true;
}

// Gives an idle lane the next chunk. False when there is none.
bool ChunkHasher::Assign(std::size_t lane) {
    const auto chunk = source_.NextChunk();
    if (!chunk) {
        return false;
    }
    lanes_[lane] = {*chunk, &pending_.emplace_back(), 0, {}};
    streams_->Start(lane);
    return true;
}

// False when the chunk has no more to read: all was, or no more can be.
bool ChunkHasher::ReadPiece(std::size_t lane) {
    Lane& reading = lanes_[lane];
    const std::size_t wantedBytes =
        std::min(kPieceBytes, reading.chunk.lengthBytes - reading.readBytes);
    if (wantedBytes == 0) {
        return false;
    }
    if (!pieces_) {
        // Not filled: every byte is read over before it is hashed.
        pieces_.reset(new PieceBuffer[kMaxSha256Streams]);
    }
    const auto piece = std::span(pieces_[lane].bytes).first(wantedBytes);
    const auto begun = std::chrono::steady_clock::now();
    const std::size_t readBytes =
        reading.chunk.file->ReadAt(reading.chunk.offset + reading.readBytes, piece);
    source_.OnRead(std::chrono::steady_clock::now() - begun);
    if (readBytes != wantedBytes) {
        return false;
    }
    reading.readBytes += wantedBytes;
    reading.unhashed = piece;
    // A last piece may be shorter than a block; it is hashed when the chunk ends.
    return wantedBytes >= kSha256BlockBytes;
}

void ChunkHasher::EndChunk(std::size_t lane) {
    const Lane ending = std::exchange(lanes_[lane], Lane{});
    HashedChunk& result = ending.pending->result;
    result.isRead = ending.readBytes == ending.chunk.lengthBytes;
    if (result.isRead) {
        result.hashError = streams_->Finish(lane, ending.unhashed, result.digest);
    } else {
        source_.OnUnreadChunk(ending.chunk);
    }
    ending.pending->isDone = true;
}

}  // namespace sealkeeper
