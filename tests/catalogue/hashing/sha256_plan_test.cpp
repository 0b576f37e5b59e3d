#include "catalogue/hashing/sha256_plan.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace sealkeeper {
namespace {

// Never called.
constexpr Sha256Kernel kShaKernel = {"sha", 4, nullptr, nullptr};
constexpr Sha256Kernel kWide16 = {"wide16", 16, nullptr, nullptr, true};
constexpr Sha256Kernel kWide8 = {"wide8", 8, nullptr, nullptr, true};
constexpr Sha256Kernel kPlain = {"plain", 1, nullptr, nullptr};

Sha256CallCosts Costs(const Sha256Kernel& kernel, std::initializer_list<std::uint64_t> ofLanes) {
    Sha256CallCosts costs{&kernel, {}};
    costs.ofLanes.fill(kNoSha256Cost);
    std::size_t lanes = 0;
    for (const std::uint64_t cost : ofLanes) {
        costs.ofLanes.at(++lanes) = cost;
    }
    return costs;
}

Sha256CallCosts WideCosts(const Sha256Kernel& kernel, std::uint64_t cost) {
    Sha256CallCosts costs = Costs(kernel, {});
    for (std::size_t lanes = 1; lanes <= kernel.maxLanes; ++lanes) {
        costs.ofLanes.at(lanes) = cost;
    }
    return costs;
}

std::string CallsFor(const Sha256Plan& plan, std::size_t laneCount) {
    std::string calls;
    while (laneCount > 0) {
        const Sha256PlannedCall& call = plan.at(laneCount);
        if (call.laneCount == 0 || call.laneCount > laneCount) {
            return calls + "a wrong call";
        }
        calls += calls.empty() ? "" : " + ";
        calls += call.kernel->name + (" " + std::to_string(call.laneCount));
        laneCount -= call.laneCount;
    }
    return calls;
}

struct PlannedLanes {
    std::size_t laneCount;
    const char* calls;
};

void ExpectPlan(const std::vector<Sha256CallCosts>& costs,
                const std::vector<PlannedLanes>& expected) {
    const Sha256Plan plan = MakeSha256Plan(costs);
    for (const PlannedLanes& lanes : expected) {
        EXPECT_EQ(CallsFor(plan, lanes.laneCount), lanes.calls) << lanes.laneCount << " lanes";
    }
}

// On this processor the SHA extensions are nearly as fast as AVX-512.
TEST(Sha256Plan, OnAnAmdProcessorWithAvx512GoesWideWhenMostLanesAreBusy) {
    ExpectPlan({Costs(kShaKernel, {581, 781, 1001, 1282}), Costs(kPlain, {2393}),
                WideCosts(kWide16, 3795), WideCosts(kWide8, 5538)},
               {{1, "sha 1"},
                {2, "sha 2"},
                {4, "sha 4"},
                {5, "sha 2 + sha 3"},
                {8, "sha 4 + sha 4"},
                {11, "sha 3 + sha 4 + sha 4"},
                {12, "wide16 12"},
                {16, "wide16 16"}});
}

// On this one they gain little from more lanes, and reach two thirds of the speed of AVX-512.
TEST(Sha256Plan, OnAnIntelProcessorWithAvx512GoesWideEarlier) {
    ExpectPlan({Costs(kShaKernel, {806, 1400, 2060, 2730}), Costs(kPlain, {3400}),
                WideCosts(kWide16, 7447), WideCosts(kWide8, 10922)},
               {{1, "sha 1"},
                {4, "sha 4"},
                {10, "sha 3 + sha 3 + sha 4"},
                {11, "wide16 11"},
                {16, "wide16 16"}});
}

TEST(Sha256Plan, WithoutShaExtensionsTakesPlainCodeForOneLaneAndVectorsForMore) {
    ExpectPlan({Costs(kPlain, {3400}), WideCosts(kWide8, 5400)}, {{1, "plain 1"},
                                                                  {2, "wide8 2"},
                                                                  {8, "wide8 8"},
                                                                  {9, "plain 1 + wide8 8"},
                                                                  {10, "wide8 2 + wide8 8"},
                                                                  {16, "wide8 8 + wide8 8"}});
}

TEST(Sha256Plan, FillsAWideKernelOnceWhereTwoAreAsCheap) {
    ExpectPlan({WideCosts(kWide16, 5000), WideCosts(kWide8, 3000)},
               {{1, "wide8 1"}, {8, "wide8 8"}, {9, "wide16 9"}, {16, "wide16 16"}});
}

TEST(Sha256Plan, OfOneKernelUsesNothingElse) {
    ExpectPlan({Costs(kPlain, {100})}, {{1, "plain 1"}, {3, "plain 1 + plain 1 + plain 1"}});
    ExpectPlan({WideCosts(kWide16, 100)}, {{1, "wide16 1"}, {16, "wide16 16"}});
}

TEST(Sha256Plan, TakesCostsOfNothing) {
    ExpectPlan({Costs(kShaKernel, {0, 0, 0, 0})}, {{1, "sha 1"}, {2, "sha 1 + sha 1"}});
}

// Costs as a disturbed measurement reports them: fewer lanes are slower than more.
TEST(Sha256Plan, SplitsAroundACallThatIsTooDear) {
    ExpectPlan({Costs(kShaKernel, {100, 900, 250, 280})},
               {{2, "sha 1 + sha 1"}, {4, "sha 4"}, {6, "sha 1 + sha 1 + sha 4"}});
}

}  // namespace
}  // namespace sealkeeper
