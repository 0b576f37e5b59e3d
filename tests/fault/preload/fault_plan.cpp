#include "fault/preload/fault_plan.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace sealkeeper::fault {
namespace {

constexpr std::size_t kMaxNameBytes = 64;
constexpr std::size_t kMaxPathBytes = 4096;
constexpr int kMaxFrames = 48;
constexpr std::string_view kMark = "sealkeeper begins\n";

struct Plan {
    // Empty if no call is to fail.
    std::array<char, kMaxNameBytes> function{};
    unsigned call = 0;
    bool onwards = false;
    Fault fault;
};

constinit Plan g_plan;
constinit std::array<char, kMaxPathBytes> g_reportPath{};
constinit std::atomic<bool> g_isCounting = false;
constinit std::atomic<bool> g_hasStruck = false;
constinit std::atomic<CallCounter*> g_lastCalled = nullptr;
constinit thread_local bool g_isOwnCall = false;

// While it exists, calls of this thread belong to this library and do not count.
class OwnCalls {
  public:
    OwnCalls() { g_isOwnCall = true; }
    OwnCalls(const OwnCalls&) = delete;
    OwnCalls& operator=(const OwnCalls&) = delete;
    ~OwnCalls() { g_isOwnCall = false; }
};

void ParsePlan(const char* text) {
    std::array<char, 16> reach{};
    std::array<char, 16> kind{};
    if (std::sscanf(text, "%63[^:]:%u:%15[^:]:%15[^:]:%d", g_plan.function.data(), &g_plan.call,
                    reach.data(), kind.data(), &g_plan.fault.value) != 5) {
        std::abort();
    }
    g_plan.onwards = std::string_view(reach.data()) == "onwards";
    const std::string_view kindName(kind.data());
    g_plan.fault.kind = kindName == "short"   ? FaultKind::Short
                        : kindName == "wrong" ? FaultKind::Wrong
                                              : FaultKind::Fail;
}

int OpenReport() {
    return g_reportPath[0] == '\0'
               ? -1
               : open(g_reportPath.data(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

void PrintFrames(int report) {
    std::array<void*, kMaxFrames> frames{};
    const int count = backtrace(frames.data(), kMaxFrames);
    for (int i = 0; i < count; ++i) {
        void* const frame = frames[static_cast<std::size_t>(i)];
        Dl_info module{};
        if (dladdr(frame, &module) == 0) {
            continue;
        }
        const auto offset = reinterpret_cast<std::uintptr_t>(frame) -
                            reinterpret_cast<std::uintptr_t>(module.dli_fbase);
        dprintf(report, "frame %s %zx\n", module.dli_fname, static_cast<std::size_t>(offset));
    }
}

void ReportStrike(const char* function, unsigned call, const Subject& subject) {
    // Read first, since the report takes a descriptor itself.
    std::array<char, kMaxPathBytes> target{};
    if (subject.descriptor == STDOUT_FILENO) {
        std::strcpy(target.data(), "stdout");
    } else if (subject.descriptor >= 0) {
        std::array<char, 32> link{};
        std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", subject.descriptor);
        const ssize_t length = readlink(link.data(), target.data(), target.size() - 1);
        target[length > 0 ? static_cast<std::size_t>(length) : 0] = '\0';
    }
    const int report = OpenReport();
    if (report < 0) {
        return;
    }
    dprintf(report, "struck %s %u %s\n", function, call,
            subject.path != nullptr ? subject.path : target.data());
    PrintFrames(report);
    close(report);
}

[[gnu::constructor]] void Begin() {
    const OwnCalls own;
    if (const char* path = std::getenv("SEALKEEPER_FAULT_REPORT")) {
        std::strncpy(g_reportPath.data(), path, g_reportPath.size() - 1);
    }
    if (const char* plan = std::getenv("SEALKEEPER_FAULT")) {
        ParsePlan(plan);
    }
    if (std::getenv("SEALKEEPER_FAULT_MARK") != nullptr) {
        static_cast<void>(write(-1, kMark.data(), kMark.size()) == 0);
    }
    g_isCounting = true;
}

}  // namespace

std::optional<Fault> CallCounter::Next(const Subject& subject) noexcept {
    if (g_isOwnCall || !g_isCounting.load(std::memory_order_relaxed)) {
        return std::nullopt;
    }
    const unsigned call = calls_.fetch_add(1, std::memory_order_relaxed) + 1;
    if (call == 1) {
        nextCalled_ = g_lastCalled.load();
        while (!g_lastCalled.compare_exchange_weak(nextCalled_, this)) {
        }
    }
    const bool strikes = (call == g_plan.call || (g_plan.onwards && call > g_plan.call)) &&
                         std::strcmp(name_, g_plan.function.data()) == 0;
    if (!strikes) {
        return std::nullopt;
    }
    if (!g_hasStruck.exchange(true)) {
        const OwnCalls own;
        ReportStrike(name_, call, subject);
    }
    return g_plan.fault;
}

[[gnu::destructor]] void ReportCalls() noexcept {
    const OwnCalls own;
    g_isCounting = false;
    const int report = OpenReport();
    if (report < 0) {
        return;
    }
    for (const CallCounter* counter = g_lastCalled; counter != nullptr;
         counter = counter->nextCalled_) {
        dprintf(report, "calls %s %u\n", counter->name_, counter->calls_.load());
    }
    close(report);
}

}  // namespace sealkeeper::fault
