#include "support/fake_clock.h"

#include <time.h>

#include <algorithm>
#include <atomic>

namespace sealkeeper::test {
namespace {

using std::chrono::nanoseconds;

// Constant-initialised, since other files' initialisers read the clock. Atomic, since the threads
// that hash read it as well.
constinit std::atomic<bool> g_isStopped{false};
constinit std::atomic<nanoseconds::rep> g_now{0};
constinit std::atomic<nanoseconds::rep> g_step{0};

nanoseconds SystemTime() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::chrono::seconds(now.tv_sec) + nanoseconds(now.tv_nsec);
}

nanoseconds ReadClock() {
    if (!g_isStopped) {
        return SystemTime();
    }
    return nanoseconds(g_now.fetch_add(g_step));
}

}  // namespace

FakeClock::FakeClock() {
    g_now = std::max(g_now.load(), SystemTime().count());
    g_step = 0;
    g_isStopped = true;
}

FakeClock::~FakeClock() {
    g_isStopped = false;
}

void FakeClock::Advance(nanoseconds time) {
    g_now += time.count();
}

void FakeClock::AdvanceAtEachReading(nanoseconds time) {
    g_step = time.count();
}

}  // namespace sealkeeper::test

// Replaces the library's own, which is linked dynamically.
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
    return time_point(sealkeeper::test::ReadClock());
}
