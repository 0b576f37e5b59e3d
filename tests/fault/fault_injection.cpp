#include "fault/fault_injection.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "fault/interposition.h"

namespace sealkeeper::test {
namespace {

struct Fault {
    bool armed = false;
    bool struck = false;
    std::size_t callsBefore = 0;
    ScopedFault::Reach reach = ScopedFault::Reach::Onwards;
    int value = 0;
    std::size_t callCount = 0;
};

constinit std::array<Fault, static_cast<std::size_t>(Call::Count)> g_faults{};

constinit std::size_t g_largestAllocation = 0;

constinit MemoryRange g_largePages;

Fault& FaultOf(Call call) {
    return g_faults[static_cast<std::size_t>(call)];
}

}  // namespace

bool Strikes(Call call) {
    Fault& fault = FaultOf(call);
    ++fault.callCount;
    if (!fault.armed) {
        return false;
    }
    if (fault.callsBefore > 0) {
        --fault.callsBefore;
        return false;
    }
    fault.struck = true;
    if (fault.reach == ScopedFault::Reach::Once) {
        fault.armed = false;
    }
    if (fault.reach == ScopedFault::Reach::Twice) {
        fault.reach = ScopedFault::Reach::Once;
    }
    if (fault.reach == ScopedFault::Reach::EveryOther) {
        fault.callsBefore = 1;
    }
    return true;
}

int Failure(Call call, int usualError) {
    errno = FaultOf(call).value != 0 ? FaultOf(call).value : usualError;
    return -1;
}

int FaultValue(Call call) {
    return FaultOf(call).value;
}

void NoteAllocation(std::size_t bytes) {
    g_largestAllocation = std::max(g_largestAllocation, bytes);
}

void NoteLargePages(const void* start, std::size_t bytes) {
    g_largePages = {start, bytes};
}

ScopedFault::ScopedFault(Call call, std::size_t firstFailing, Reach reach, int value)
    : call_(call) {
    FaultOf(call) = {true, false, firstFailing, reach, value, 0};
}

ScopedFault::~ScopedFault() {
    Disarm();
}

bool ScopedFault::Struck() const {
    return FaultOf(call_).struck;
}

void ScopedFault::Disarm() {
    FaultOf(call_).armed = false;
}

std::size_t CallCount(Call call) {
    return FaultOf(call).callCount;
}

void ResetCallCount(Call call) {
    FaultOf(call).callCount = 0;
}

std::size_t LargestAllocation() {
    return g_largestAllocation;
}

void ResetLargestAllocation() {
    g_largestAllocation = 0;
}

MemoryRange LastLargePages() {
    return g_largePages;
}

}  // namespace sealkeeper::test
