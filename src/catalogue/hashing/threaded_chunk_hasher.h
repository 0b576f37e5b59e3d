// Hashes chunks in its own threads. One thread, the caller's, adds and takes them.
#ifndef SEALKEEPER_CATALOGUE_HASHING_THREADED_CHUNK_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_THREADED_CHUNK_HASHER_H

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <list>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

#include "catalogue/hashing/chunk_hasher.h"
#include "catalogue/hashing/chunk_lanes.h"
#include "catalogue/hashing/unread_file.h"
#include "catalogue/hashing/worker_load.h"

namespace sealkeeper {

// Which worker hashes a chunk, and when, differs from run to run; the digests that `Take` returns
// do not.
class ThreadedChunkHasher : public ChunkHasher {
  public:
    // Starts `workerCount` threads, or fewer if the system refuses more; see `WorkerCount`. Without
    // any, no chunk may be added.
    ThreadedChunkHasher(const Sha256Engine& engine, std::size_t workerCount);
    // Stops the workers and waits for them. Chunks that are not done are abandoned.
    ~ThreadedChunkHasher() override;

    [[nodiscard]] std::size_t WorkerCount() const { return workers_.size(); }

    [[nodiscard]] std::size_t LaneCount() const override;
    [[nodiscard]] bool HashesInBackground() const override { return true; }
    void Add(ChunkToHash chunk) override;
    [[nodiscard]] std::size_t PendingCount() const override { return pending_.size(); }
    void AwaitOldest() override;
    [[nodiscard]] HashedChunk Take() override;
    void Drop(std::size_t count) override;

  private:
    // A list, so that `waiting_` stays valid when other elements are added or removed.
    using Chunks = std::list<PendingChunk>;

    // The chunks that a worker begins together.
    struct Share {
        std::array<PendingChunk*, kMaxSha256Lanes> chunks{};
        std::size_t count = 0;
    };

    void AwaitOldest(std::unique_lock<std::mutex>& lock);
    void Work(ChunkLanes& lanes);
    [[nodiscard]] WorkerLoad Load() const;
    [[nodiscard]] bool ShouldAnotherBegin() const;
    [[nodiscard]] bool MayFirstWaitingBegin() const;
    [[nodiscard]] bool IsOldestDone() const { return pending_.front().isDone; }
    void TakeShare(std::size_t idleLanes, Share& share);
    [[nodiscard]] std::span<PendingChunk* const> HashUntilSomeEnd(ChunkLanes& lanes,
                                                                  const Share& share) const;
    void End(std::span<PendingChunk* const> ended);

    const Sha256Engine& engine_;

    // Guards the members below, up to `lanes_`. Only the caller's thread changes the length of
    // `pending_`, so it reads that without the mutex. Once begun, a chunk belongs to its worker
    // until it is done, except `isDropped`.
    std::mutex mutex_;
    std::condition_variable workAdded_;
    std::condition_variable oldestDone_;
    Chunks pending_;
    // The first chunk that was not begun, and how many there are from there on.
    Chunks::iterator waiting_ = pending_.end();
    std::size_t waitingCount_ = 0;
    // How many workers have chunks in their lanes.
    std::size_t busyWorkers_ = 0;
    // Whether the caller waits for a chunk.
    bool isAwaited_ = false;
    UnreadFile unreadFile_;
    // Also read by workers without the mutex.
    std::atomic<bool> isStopping_ = false;

    // One for each worker, which alone uses it. A deque, because lanes cannot be moved.
    std::deque<ChunkLanes> lanes_;
    std::vector<std::thread> workers_;
};

}  // namespace sealkeeper

#endif
