#include "inspect/rules/planned_outputs.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

using Paths = std::vector<std::string>;

TEST(PlannedOutputs, OfAGameLieInTheStandardFolder) {
    const PlannedOutputs outputs = PlanOutputs("/games/a", "base");
    EXPECT_EQ(outputs.directories, (Paths{"Quorvane", "Quorvane/Certificates"}));
    EXPECT_EQ(outputs.runtimeConfiguration, "Quorvane/Certificates/runtime.conf");
    EXPECT_EQ(outputs.catalogue, "Quorvane/Certificates/base.bin");
    EXPECT_EQ(outputs.certificateCopy, "Quorvane/Certificates/base.cer");
    EXPECT_EQ(outputs.pathToLeaveOut, "/games/a/Quorvane/Certificates/base.cer");
}

TEST(PlannedOutputs, InAnotherLetterCaseHaveNoRuntimeConfiguration) {
    const PlannedOutputs outputs = PlanOutputs("/games/a", "Base");
    EXPECT_EQ(outputs.directories.size(), 2U);
    EXPECT_EQ(outputs.runtimeConfiguration, std::nullopt);
    EXPECT_EQ(outputs.catalogue, "Quorvane/Certificates/Base.bin");
}

TEST(PlannedOutputs, OfAModLieInTheGameDirectory) {
    const PlannedOutputs outputs = PlanOutputs("/games/a", "mod1");
    EXPECT_EQ(outputs.directories, Paths{});
    EXPECT_EQ(outputs.runtimeConfiguration, std::nullopt);
    EXPECT_EQ(outputs.catalogue, "mod1.bin");
    EXPECT_EQ(outputs.certificateCopy, "mod1.cer");
    EXPECT_EQ(outputs.pathToLeaveOut, "mod1.cer");
}

}  // namespace
}  // namespace sealkeeper
