// Decides when the system is told of bytes that will be read soon.
#ifndef SEALKEEPER_CATALOGUE_HASHING_READ_AHEAD_POLICY_H
#define SEALKEEPER_CATALOGUE_HASHING_READ_AHEAD_POLICY_H

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace sealkeeper {

// Where the files come from a disk, advice lets it work while the processor hashes. Where they are
// in memory already, it is a system call and a look at each page for nothing. Reads that have to
// wait tell the two apart: each pays, by its length, for some steps of advice
// (`InputFile::ReadAheadSteps`). Now and then one takes long in memory, too, because the processor
// does something else meanwhile; it pays for few. What is read is the same either way.
class ReadAheadPolicy {
  public:
    // Much longer than it takes to copy a piece from memory, and shorter than most disks answer.
    static constexpr std::chrono::microseconds kWait{50};

    // About what a step takes in vain.
    static constexpr std::chrono::microseconds kStepTime{4};

    static constexpr std::size_t kStepsAtFirst = 256;
    static constexpr std::size_t kMaxSteps = 4096;

    // Whether to give advice of so many steps.
    [[nodiscard]] bool ShouldAdvise(std::size_t steps) {
        if (steps > stepsLeft_) {
            return false;
        }
        stepsLeft_ -= steps;
        return true;
    }

    // `duration` is what one read took.
    void OnRead(std::chrono::nanoseconds duration) {
        if (duration > kWait) {
            const auto steps = static_cast<std::size_t>(duration / kStepTime);
            stepsLeft_ = std::min(stepsLeft_ + steps, kMaxSteps);
        }
    }

  private:
    std::size_t stepsLeft_ = kStepsAtFirst;
};

}  // namespace sealkeeper

#endif
