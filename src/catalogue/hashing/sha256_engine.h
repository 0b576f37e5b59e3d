// SHA-256 (FIPS 180-4) of several messages at once, on the best code that this processor runs.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_ENGINE_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_ENGINE_H

#include <cstddef>
#include <mutex>
#include <span>
#include <vector>

#include "catalogue/hashing/sha256_kernel.h"
#include "catalogue/hashing/sha256_plan.h"

namespace sealkeeper {

// Advances the hash values of several messages at once, by whichever kernels take least time on
// this processor. Several threads may use one engine at a time.
//
// One lane needs no choice: the first usable kernel takes it, so that hashing one small file costs
// nothing but the proof of that kernel. For more lanes the kernels are timed, once and when they
// are first asked for, in less than half a millisecond with their proofs. Nothing else tells which
// is faster: AMD's SHA extensions nearly match its AVX-512 for four lanes, Intel's reach half of
// it, and a processor to come may differ from both.
class Sha256Engine {
  public:
    // `kernels` are tried, for one lane in this order; unusable ones are left out. When none is
    // usable, the portable one is the only one.
    explicit Sha256Engine(std::vector<const Sha256Kernel*> kernels);

    // Takes in `blockCount` blocks of each of `lanes`: up to kMaxSha256Lanes, all different.
    // Without lanes or without blocks nothing changes.
    void Compress(std::span<const Sha256Lane> lanes, std::size_t blockCount) const;

    // Proves and times the kernels now rather than when they are first needed for more than one
    // lane; nothing above allocates afterwards. Lack of memory is an exception.
    void Prepare() const;

    // The lanes of the widest kernel that this processor supports, known without measuring: how
    // many messages are worth having under way.
    [[nodiscard]] std::size_t LaneCount() const { return laneCount_; }

  private:
    [[nodiscard]] const Sha256Kernel& FirstUsable() const;
    [[nodiscard]] Sha256Plan MakePlan() const;

    // Those that this processor supports.
    std::vector<const Sha256Kernel*> kernels_;
    std::size_t laneCount_ = 0;

    mutable std::once_flag firstIsFound_;
    mutable const Sha256Kernel* first_ = nullptr;

    mutable std::once_flag planIsMade_;
    mutable Sha256Plan plan_{};
};

// Of all compiled kernels; made on first use.
[[nodiscard]] const Sha256Engine& ProcessSha256Engine();

}  // namespace sealkeeper

#endif
