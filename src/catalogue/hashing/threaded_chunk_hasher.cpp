#include "catalogue/hashing/threaded_chunk_hasher.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>

namespace sealkeeper {
namespace {

// Hashing this much takes a fraction of a millisecond.
constexpr std::size_t kLittleBytes = 1'048'576;

}  // namespace

ThreadedChunkHasher::ThreadedChunkHasher(const Sha256Engine& engine, std::size_t workerCount)
    : engine_(engine) {
    // Before any threads start: they would disturb the timing and could not report a failure.
    engine_.Prepare();
    workers_.reserve(workerCount);
    // Held until all workers exist, because they use their number.
    const std::scoped_lock lock(mutex_);
    try {
        for (std::size_t worker = 0; worker < workerCount; ++worker) {
            ChunkLanes& lanes = lanes_.emplace_back(engine);
            workers_.emplace_back([this, &lanes] { Work(lanes); });
        }
    } catch (const std::exception&) {
        // The system grants no more threads or memory: the workers that exist do all the work.
    }
}

ThreadedChunkHasher::~ThreadedChunkHasher() {
    {
        // Under the mutex, so that no worker misses it between its check and its wait.
        const std::scoped_lock lock(mutex_);
        isStopping_ = true;
    }
    workAdded_.notify_all();
    for (std::thread& worker : workers_) {
        worker.join();
    }
}

std::size_t ThreadedChunkHasher::LaneCount() const {
    return engine_.LaneCount() * WorkerCount();
}

// Wakes a worker only when there are enough chunks to fill its lanes. `AwaitOldest` wakes them
// otherwise.
void ThreadedChunkHasher::Add(ChunkToHash chunk) {
    bool isShareComplete = false;
    {
        const std::scoped_lock lock(mutex_);
        pending_.emplace_back(std::move(chunk));
        if (waitingCount_++ == 0) {
            waiting_ = std::prev(pending_.end());
        }
        isShareComplete = waitingCount_ % engine_.LaneCount() == 0 && MayGetBusy();
    }
    if (isShareComplete) {
        workAdded_.notify_one();
    }
}

void ThreadedChunkHasher::AwaitOldest() {
    std::unique_lock lock(mutex_);
    AwaitOldest(lock);
}

HashedChunk ThreadedChunkHasher::Take() {
    std::unique_lock lock(mutex_);
    AwaitOldest(lock);
    const HashedChunk result = pending_.front().result;
    pending_.pop_front();
    return result;
}

// Workers may be hashing some of these chunks; they stop after the current piece.
void ThreadedChunkHasher::Drop(std::size_t count) {
    if (count == 0) {
        return;
    }
    std::unique_lock lock(mutex_);
    const std::size_t begunCount = std::min(count, pending_.size() - waitingCount_);
    for (std::size_t waiting = begunCount; waiting < count; ++waiting) {
        waiting_ = pending_.erase(waiting_);
        --waitingCount_;
    }
    auto chunk = pending_.begin();
    for (std::size_t begun = 0; begun < begunCount; ++begun, ++chunk) {
        chunk->isDropped = true;
    }
    for (std::size_t begun = 0; begun < begunCount; ++begun) {
        AwaitOldest(lock);
        pending_.pop_front();
    }
}

void ThreadedChunkHasher::AwaitOldest(std::unique_lock<std::mutex>& lock) {
    if (!IsOldestDone()) {
        isAwaited_ = true;
        workAdded_.notify_all();
        oldestDone_.wait(lock, [this] { return IsOldestDone(); });
        isAwaited_ = false;
    }
}

void ThreadedChunkHasher::Work(ChunkLanes& lanes) {
    Share share;
    std::unique_lock lock(mutex_);
    while (!isStopping_) {
        if (lanes.IsIdle()) {
            workAdded_.wait(lock, [&] {
                return isStopping_ || (MayGetBusy() && IsWorthBeginning(lanes.IdleCount()));
            });
            if (isStopping_) {
                return;
            }
            ++busyWorkers_;
        }
        TakeShare(lanes.IdleCount(), share);
        lock.unlock();
        const auto ended = HashUntilSomeEnd(lanes, share);
        lock.lock();
        End(ended);
        if (lanes.IsIdle()) {
            --busyWorkers_;
        }
    }
}

// While the caller is busy, one worker stays idle: it would only take a processor from the caller.
std::size_t ThreadedChunkHasher::MostBusyWorkers() const {
    return isAwaited_ ? WorkerCount() : std::max<std::size_t>(WorkerCount(), 2) - 1;
}

// Full lanes are the fastest, so a worker waits for enough chunks to fill its idle lanes, unless
// the caller is waiting.
bool ThreadedChunkHasher::IsWorthBeginning(std::size_t idleLanes) const {
    return MayBegin() && (isAwaited_ || waitingCount_ >= idleLanes);
}

// Whether the first waiting chunk may be begun now.
bool ThreadedChunkHasher::MayBegin() const {
    return waitingCount_ > 0 &&
           (waiting_ == pending_.begin() || waiting_->chunk.file != unreadFile_.lock());
}

// Takes the fair share of this worker and leaves that of the idle ones, so that none has all the
// work while another has none. Busy workers are left nothing: full lanes are the fastest, so this
// one is done sooner than they would be. If the share is small, filling the lanes comes first.
void ThreadedChunkHasher::TakeShare(std::size_t idleLanes, Share& share) {
    const std::size_t idleWorkers = MayGetBusy() ? MostBusyWorkers() - busyWorkers_ : 0;
    const std::size_t fairCount = (waitingCount_ + idleWorkers) / (idleWorkers + 1);
    std::size_t takenBytes = 0;
    share.count = 0;
    if (!IsWorthBeginning(idleLanes)) {
        return;
    }
    while (share.count < idleLanes && MayBegin() &&
           (share.count < fairCount || takenBytes < kLittleBytes)) {
        takenBytes += waiting_->chunk.lengthBytes;
        share.chunks[share.count++] = &*waiting_;
        ++waiting_;
        --waitingCount_;
    }
}

std::span<PendingChunk* const> ThreadedChunkHasher::HashUntilSomeEnd(ChunkLanes& lanes,
                                                                     const Share& share) const {
    for (PendingChunk* const chunk : std::span(share.chunks).first(share.count)) {
        lanes.Begin(*chunk);
    }
    auto ended = lanes.TakeEnded();
    while (ended.empty() && !isStopping_) {
        lanes.Advance();
        ended = lanes.TakeEnded();
    }
    return ended;
}

void ThreadedChunkHasher::End(std::span<PendingChunk* const> ended) {
    for (PendingChunk* const chunk : ended) {
        chunk->isDone = true;
        if (!chunk->result.isRead && !chunk->isDropped) {
            unreadFile_ = chunk->chunk.file;
        }
    }
    if (!pending_.empty() && IsOldestDone()) {
        oldestDone_.notify_one();
    }
}

}  // namespace sealkeeper
