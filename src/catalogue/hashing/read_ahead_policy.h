// Token bucket: reads that had to wait earn advice calls.
#ifndef SEALKEEPER_CATALOGUE_HASHING_READ_AHEAD_POLICY_H
#define SEALKEEPER_CATALOGUE_HASHING_READ_AHEAD_POLICY_H

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace sealkeeper {

// Decides when the system is told of bytes that will be read soon. Where files come from a disk,
// advice lets it work while the processor hashes. Where they are in memory already, advice is a
// system call and a look at each page for nothing. The time that reads had to wait tells the two
// apart, and pays for some steps of advice (`InputFile::ReadAheadSteps`). What is read is the same
// either way.
class ReadAheadPolicy {
  public:
    // Much longer than it takes to copy a piece from memory, and shorter than most disks answer. A
    // read in memory takes longer only when the processor did something else meanwhile.
    static constexpr std::chrono::microseconds kWait{50};

    // No read counts as having waited longer: where a processor is shared with others, one in
    // memory may take any time.
    static constexpr std::chrono::microseconds kLongestWait{500};

    // What a step of advice costs where the pages are in memory.
    static constexpr std::chrono::microseconds kStepTime{4};

    static constexpr std::size_t kStepsAtFirst = 256;
    static constexpr std::size_t kMaxSteps = 4096;

    // What a read of this duration counts as having waited.
    [[nodiscard]] static std::chrono::nanoseconds WaitOf(std::chrono::nanoseconds duration) {
        return duration > kWait ? std::min<std::chrono::nanoseconds>(duration, kLongestWait)
                                : std::chrono::nanoseconds::zero();
    }

    // Whether to give advice of so many steps.
    [[nodiscard]] bool ShouldAdvise(std::size_t steps) {
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
