// Decides when the system is told of bytes that will be read soon.
#ifndef SEALKEEPER_CATALOGUE_READ_AHEAD_POLICY_H
#define SEALKEEPER_CATALOGUE_READ_AHEAD_POLICY_H

#include <chrono>
#include <cstddef>

namespace sealkeeper {

// Where the files come from a disk, advice lets it work while the processor hashes. Where they are
// in memory already, it is a system call and a look at each page for nothing. Reads that have to
// wait tell the two apart. What is read is the same either way.
class ReadAheadPolicy {
  public:
    // Much longer than it takes to copy a piece from memory, and shorter than most disks answer.
    static constexpr std::chrono::microseconds kWait{50};
    // How many chunks are told of at first, and how many after a read that had to wait: with all of
    // them told of in time, one read in so many waits.
    static constexpr std::size_t kAdvicesAtATime = 256;

    // Whether to tell of the next chunk.
    [[nodiscard]] bool TakeAdvice() {
        if (advicesLeft_ == 0) {
            return false;
        }
        --advicesLeft_;
        return true;
    }

    // A read took so long.
    void OnRead(std::chrono::nanoseconds duration) {
        if (duration > kWait) {
            advicesLeft_ = kAdvicesAtATime;
        }
    }

  private:
    std::size_t advicesLeft_ = kAdvicesAtATime;
};

}  // namespace sealkeeper

#endif
