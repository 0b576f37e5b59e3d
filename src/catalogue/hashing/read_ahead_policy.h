// Token bucket: slow reads earn advice calls.
#ifndef SEALKEEPER_CATALOGUE_HASHING_READ_AHEAD_POLICY_H
#define SEALKEEPER_CATALOGUE_HASHING_READ_AHEAD_POLICY_H

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace sealkeeper {

// Decides when to advise the system about bytes that will be read soon. If files come from a disk,
// advice lets the disk work while the processor hashes. If they are cached, advice costs a system
// call and a look at each page for nothing. The time that reads waited tells the two apart, and
// earns tokens: steps of advice (`InputFile::ReadAheadSteps`). What is read is the same either way.
class ReadAheadPolicy {
  public:
    // A read that takes longer counts as having waited. Much longer than copying a piece from
    // memory, shorter than the answer of most disks. A cached read takes longer only if the thread
    // was preempted.
    static constexpr std::chrono::microseconds kWait{50};

    // No read counts for more than this: on a shared processor, a cached read may take any time.
    static constexpr std::chrono::microseconds kLongestWait{500};

    // The cost of advising cached pages, per step.
    static constexpr std::chrono::microseconds kStepTime{4};

    static constexpr std::size_t kStepsAtFirst = 256;
    static constexpr std::size_t kMaxSteps = 4096;

    // The time that a read of this duration counts as having waited.
    [[nodiscard]] static std::chrono::nanoseconds WaitOf(std::chrono::nanoseconds duration) {
        return duration > kWait ? std::min<std::chrono::nanoseconds>(duration, kLongestWait)
                                : std::chrono::nanoseconds::zero();
    }

    // Takes `steps` steps of advice from the bucket. False, and takes nothing, when it holds fewer.
    [[nodiscard]] bool TakeSteps(std::size_t steps) {
        if (steps > stepsLeft_) {
            return false;
        }
        stepsLeft_ -= steps;
        return true;
    }

    // `waited` is the sum of `WaitOf` over some reads.
    void Earn(std::chrono::nanoseconds waited) {
        const auto steps = static_cast<std::size_t>(waited / kStepTime);
        stepsLeft_ = std::min(stepsLeft_ + steps, kMaxSteps);
    }

  private:
    std::size_t stepsLeft_ = kStepsAtFirst;
};

}  // namespace sealkeeper

#endif
