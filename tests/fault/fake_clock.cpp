#include "fault/fake_clock.h"

#include <time.h>

#include <algorithm>

namespace sealkeeper::test {
namespace {

using std::chrono::nanoseconds;

// Constant-initialised, since other files' initialisers read the clock.
constinit bool g_isStopped = false;
constinit nanoseconds g_now{0};
constinit nanoseconds g_step{0};

nanoseconds SystemTime() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::chrono::seconds(now.tv_sec) + nanoseconds(now.tv_nsec);
}

nanoseconds ReadClock() {
    if (!g_isStopped) {
        return SystemTime();
    }
    const nanoseconds now = g_now;
    g_now += g_step;
    return now;
}

}  // namespace

FakeClock::FakeClock() {
    g_isStopped = true;
    g_now = std::max(g_now, SystemTime());
    g_step = nanoseconds(0);
}

FakeClock::~FakeClock() {
    g_isStopped = false;
}

void FakeClock::Advance(nanoseconds time) {
    g_now += time;
}

void FakeClock::AdvanceAtEachReading(nanoseconds time) {
    g_step = time;
}

}  // namespace sealkeeper::test

// Replaces the library's own, which is linked dynamically.
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
    return time_point(sealkeeper::test::ReadClock());
}
