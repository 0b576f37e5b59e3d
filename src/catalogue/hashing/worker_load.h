// How many of the waiting chunks a worker takes, and when it begins.
#ifndef SEALKEEPER_CATALOGUE_HASHING_WORKER_LOAD_H
#define SEALKEEPER_CATALOGUE_HASHING_WORKER_LOAD_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace sealkeeper {

// The state of all workers. A worker is fastest with full lanes, but when there are few chunks, all
// workers with half-full lanes are faster than one.
struct WorkerLoad {
    // At least 1.
    std::size_t workerCount = 1;
    std::size_t lanesPerWorker = 1;
    // Workers that have chunks in their lanes.
    std::size_t busyWorkers = 0;
    // Chunks that no worker has begun.
    std::size_t waitingChunks = 0;
    // Whether the caller waits for a chunk. If not, it is about to add more.
    bool isCallerWaiting = false;

    // Whether an idle worker begins. While the caller adds chunks, it waits until there are enough
    // to fill its lanes.
    [[nodiscard]] constexpr bool ShouldGetBusy() const {
        return MayGetBusy() && waitingChunks > 0 &&
               (isCallerWaiting || waitingChunks >= lanesPerWorker);
    }

    // The share of a busy worker with `idleLanes`, in chunks. Idle workers are left as much each.
    // Busy ones are left nothing: they would begin later than this one.
    [[nodiscard]] constexpr std::size_t ShareFor(std::size_t idleLanes) const {
        if (!isCallerWaiting && waitingChunks < idleLanes) {
            return 0;
        }
        const std::size_t sharers = IdleWorkers() + 1;
        return std::min(idleLanes, (waitingChunks + sharers - 1) / sharers);
    }

    // Whether a worker takes one more chunk when it has taken `takenCount`, of `takenBytes`
    // together. Little work is not worth sharing: full lanes are faster.
    [[nodiscard]] static constexpr bool TakesAnother(std::size_t share, std::size_t takenCount,
                                                     std::uint64_t takenBytes) {
        return takenCount < share || (share > 0 && takenBytes < kLittleBytes);
    }

    // The fastest kernels hash this much in 0.2 ms, plain C++ in 4 ms.
    static constexpr std::uint64_t kLittleBytes = 1'048'576;

  private:
    // While the caller is busy, one worker stays idle: it would only take a processor from the
    // caller. A single worker always may begin.
    [[nodiscard]] constexpr bool MayGetBusy() const {
        return busyWorkers <
               (isCallerWaiting ? workerCount : std::max<std::size_t>(workerCount, 2) - 1);
    }

    [[nodiscard]] constexpr std::size_t IdleWorkers() const { return workerCount - busyWorkers; }
};

}  // namespace sealkeeper

#endif
