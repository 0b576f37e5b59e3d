#include "catalogue/hashing/threaded_chunk_hasher.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

namespace sealkeeper {
namespace {

// What the rest of the program needs for a catalogue of ordinary size.
constexpr std::size_t kReservedBytes = 16'777'216;

struct DeleteReserve {
    void operator()(void* reserve) const { ::operator delete(reserve); }
};

// Null when there is not as much. Calls the function: a new-expression for memory that nobody uses
// may be left out, and clang++ does so.
std::unique_ptr<void, DeleteReserve> Reserve() {
    return std::unique_ptr<void, DeleteReserve>(::operator new(kReservedBytes, std::nothrow));
}

}  // namespace

ThreadedChunkHasher::ThreadedChunkHasher(const Sha256Engine& engine, std::size_t workerCount)
    : engine_(engine) {
    // Before any threads start: they would disturb the timing and could not report a failure.
    engine_.Prepare();
    workers_.reserve(workerCount);
    // Held until all workers exist, because they use their number.
    const std::scoped_lock lock(mutex_);
    // Where the address space is limited, the stacks of many threads could take all of it. This
    // much is free again when they have started. It is never written to, so it takes no memory.
    const auto reserve = Reserve();
    if (!reserve) {
        return;
    }
    try {
        for (std::size_t worker = 0; worker < workerCount; ++worker) {
            ChunkLanes& lanes = lanes_.emplace_back(engine);
            workers_.emplace_back([this, &lanes] { Work(lanes); });
        }
    } catch (const std::exception&) {
        // The system grants no more threads or memory: the workers that exist do all the work.
        if (lanes_.size() > workers_.size()) {
            lanes_.pop_back();
        }
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

// Each worker that begins wakes the next, as long as there is work for it. If none can begin yet,
// `AwaitOldest` wakes the first.
void ThreadedChunkHasher::Add(ChunkToHash chunk) {
    bool isWorthWaking = false;
    {
        const std::scoped_lock lock(mutex_);
        pending_.emplace_back(std::move(chunk));
        if (waitingCount_++ == 0) {
            waiting_ = std::prev(pending_.end());
        }
        isWorthWaking = waitingCount_ % engine_.LaneCount() == 0 && ShouldAnotherBegin();
    }
    if (isWorthWaking) {
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
        workAdded_.notify_one();
        oldestDone_.wait(lock, [this] { return IsOldestDone(); });
        isAwaited_ = false;
    }
}

void ThreadedChunkHasher::Work(ChunkLanes& lanes) {
    Share share;
    std::unique_lock lock(mutex_);
    while (!isStopping_) {
        if (lanes.IsIdle()) {
            workAdded_.wait(lock, [&] { return isStopping_ || ShouldAnotherBegin(); });
            if (isStopping_) {
                return;
            }
            ++busyWorkers_;
        }
        TakeShare(lanes.IdleCount(), share);
        const bool isWorthWaking = ShouldAnotherBegin();
        lock.unlock();
        if (isWorthWaking) {
            workAdded_.notify_one();
        }
        const auto ended = HashUntilSomeEnd(lanes, share);
        lock.lock();
        End(ended);
        if (lanes.IsIdle()) {
            --busyWorkers_;
        }
    }
}

WorkerLoad ThreadedChunkHasher::Load() const {
    return {WorkerCount(), engine_.LaneCount(), busyWorkers_, waitingCount_, isAwaited_};
}

// Whether an idle worker should begin now.
bool ThreadedChunkHasher::ShouldAnotherBegin() const {
    return MayFirstWaitingBegin() && Load().ShouldGetBusy();
}

// Whether the first waiting chunk, if there is one, may be begun now.
bool ThreadedChunkHasher::MayFirstWaitingBegin() const {
    return waitingCount_ > 0 &&
           (waiting_ == pending_.begin() || !unreadFile_.HoldsBack(waiting_->chunk));
}

void ThreadedChunkHasher::TakeShare(std::size_t idleLanes, Share& share) {
    const std::size_t fairCount = Load().ShareFor(idleLanes);
    std::uint64_t takenBytes = 0;
    share.count = 0;
    while (share.count < idleLanes && MayFirstWaitingBegin() &&
           WorkerLoad::TakesAnother(fairCount, share.count, takenBytes)) {
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
        unreadFile_.Note(*chunk);
    }
    if (!pending_.empty() && IsOldestDone()) {
        oldestDone_.notify_one();
    }
}

}  // namespace sealkeeper
