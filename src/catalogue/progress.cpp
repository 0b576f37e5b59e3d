#include "catalogue/progress.h"

#include <chrono>

#include "app/console_log.h"

namespace sealkeeper {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::nanoseconds kDotInterval{500'000'000};

}  // namespace

void ProgressTick(bool final) {
    const Clock::time_point now = Clock::now();
    static Clock::time_point lastDot = now;
    if (now > lastDot + kDotInterval) {
        WriteUntagged(".");
        lastDot = now;
    }
    if (final) {
        EndConsoleLine();
    }
}

}  // namespace sealkeeper
