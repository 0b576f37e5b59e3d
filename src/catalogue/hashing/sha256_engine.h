// SHA-256 (FIPS 180-4) of several messages at once, with the fastest code that this processor
// supports.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_ENGINE_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_ENGINE_H

#include <cstddef>
#include <mutex>
#include <span>
#include <vector>

#include "catalogue/hashing/sha256_kernel.h"
#include "catalogue/hashing/sha256_plan.h"

namespace sealkeeper {

// Advances the hash values of several messages at once, with whichever kernels are fastest on this
// processor. Thread-safe.
//
// A single lane uses the first usable kernel, so that hashing one small file costs only the
// self-test of that kernel. For more lanes the kernels are tested and timed, once, on first use
// (sha256_kernel_timing.h says how long that takes). Only timing tells which is faster: for four
// lanes, AMD's SHA extensions nearly match its AVX-512, Intel's reach half of it, and future
// processors may differ from both.
class Sha256Engine {
  public:
    // Uses those of `kernels` that work here; for one lane, the first of them. If none works, only
    // the portable kernel is used.
    explicit Sha256Engine(std::vector<const Sha256Kernel*> kernels);

    // Hashes `blockCount` blocks of each of `lanes`: at most `kMaxSha256Lanes`, all different. Does
    // nothing without lanes or without blocks.
    void Compress(std::span<const Sha256Lane> lanes, std::size_t blockCount) const;

    // Tests and times the kernels now rather than when they are first needed for more than one
    // lane; afterwards `Compress` does not allocate. Lack of memory is an exception.
    void Prepare() const;

    // The lanes of the widest kernel that this processor supports, known without timing: as many
    // messages are worth hashing at once.
    [[nodiscard]] std::size_t LaneCount() const { return laneCount_; }

  private:
    [[nodiscard]] const Sha256Kernel& FirstUsable() const;
    [[nodiscard]] Sha256Plan MakePlan() const;

    // Only kernels that this processor supports.
    std::vector<const Sha256Kernel*> kernels_;
    std::size_t laneCount_ = 0;

    mutable std::once_flag firstIsFound_;
    mutable const Sha256Kernel* first_ = nullptr;

    mutable std::once_flag planIsMade_;
    mutable Sha256Plan plan_{};
};

// The engine of the process, with all compiled kernels; created on first use.
[[nodiscard]] const Sha256Engine& ProcessSha256Engine();

}  // namespace sealkeeper

#endif
