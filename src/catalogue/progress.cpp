#include "catalogue/progress.h"

#include <chrono>

#include "app/console_log.h"

namespace sealkeeper {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::nanoseconds kDotInterval{500'000'000};

// Null while ticks write dots.
TickListener g_listener = nullptr;
void* g_context = nullptr;

}  // namespace

void SendTicksTo(TickListener listener, void* context) {
    g_listener = listener;
    g_context = context;
}

void ProgressTick(bool final) {
    if (g_listener != nullptr) {
        g_listener(g_context);
        return;
    }
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
