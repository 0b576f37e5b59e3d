#include "runtime/runtime_configuration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

RuntimeConfiguration ConfigurationOf(std::uint32_t instances, const std::string& name,
                                     std::uint32_t solution) {
    RuntimeConfiguration configuration;
    configuration.version = 1;
    configuration.maxActiveInstances = instances;
    std::copy(name.begin(), name.end(), configuration.crashReporterName.begin());
    configuration.antiTamperSolution = solution;
    return configuration;
}

std::string Printed(const RuntimeConfiguration& configuration) {
    CapturedOutput output;
    EXPECT_EQ(PrintRuntimeConfiguration(configuration), ResultCode::Ok);
    return output.Take();
}

TEST(RuntimeConfiguration, PrintsEveryField) {
    EXPECT_EQ(Printed(ConfigurationOf(4294967295U, "CrashReporter", 7)),
              "[Info] Anti-cheat client configuration:\n"
              "[Info]     Version: 1\n"
              "[Info]     Maximum amount of active client instances: 4294967295\n"
              "[Info]     Crash reporter name: CrashReporter\n"
              "[Info]     Game binary anti tamper solution: Steam DRM\n");
}

TEST(RuntimeConfiguration, PrintsDefaults) {
    EXPECT_EQ(Printed(ConfigurationOf(1, "", 0)),
              "[Info] Anti-cheat client configuration:\n"
              "[Info]     Version: 1\n"
              "[Info]     Maximum amount of active client instances: 1\n"
              "[Info]     Crash reporter name: N/A\n"
              "[Info]     Game binary anti tamper solution: None\n");
}

TEST(RuntimeConfiguration, NameWithoutATerminatorEndsWithItsField) {
    const std::string name(64, 'n');
    // Bytes past the field would be printed as letters.
    EXPECT_NE(Printed(ConfigurationOf(1, name, 1)).find("name: " + name + "\n"), std::string::npos);
}

TEST(RuntimeConfiguration, NameEndsAtItsFirstZero) {
    EXPECT_NE(Printed(ConfigurationOf(1, std::string("ab\0cd", 5), 1)).find("name: ab\n"),
              std::string::npos);
    EXPECT_NE(Printed(ConfigurationOf(1, std::string("\0cd", 3), 1)).find("name: N/A\n"),
              std::string::npos);
}

TEST(RuntimeConfiguration, UnknownSolutionIsReportedBeforeItsLine) {
    EXPECT_EQ(Printed(ConfigurationOf(1, "", 9)),
              "[Info] Anti-cheat client configuration:\n"
              "[Info]     Version: 1\n"
              "[Info]     Maximum amount of active client instances: 1\n"
              "[Info]     Crash reporter name: N/A\n"
              "[Err!] Called with invalid value: 9.\n"
              "[Info]     Game binary anti tamper solution: N/A\n");
}

TEST(RuntimeConfiguration, OtherVersionsEndThePrinting) {
    for (const std::uint32_t version : {0U, 2U, 4294967295U}) {
        RuntimeConfiguration configuration = ConfigurationOf(1, "name", 1);
        configuration.version = version;
        CapturedOutput output;
        EXPECT_EQ(PrintRuntimeConfiguration(configuration),
                  ResultCode::CatalogueFileVersionUnsupported);
        EXPECT_EQ(output.Take(), "[Info] Anti-cheat client configuration:\n[Info]     Version: " +
                                     std::to_string(version) +
                                     "\n[Err!] Called with an unsupported version!\n");
    }
}

}  // namespace
}  // namespace sealkeeper
