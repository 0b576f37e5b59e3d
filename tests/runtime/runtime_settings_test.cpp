#include "runtime/runtime_settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

struct LoadOutcome {
    bool succeeded = false;
    std::string output;
    RuntimeConfiguration configuration;
};

LoadOutcome Loaded(const std::string& configText) {
    LoadOutcome outcome;
    ConfigDocument document;
    EXPECT_TRUE(document.ParseConfigText(configText));
    CapturedOutput output;
    outcome.succeeded = LoadRuntimeSettings(outcome.configuration, document);
    outcome.output = output.Take();
    return outcome;
}

LoadOutcome LoadedSection(const std::string& lines) {
    return Loaded("runtime_configuration {\n" + lines + "}\n");
}

std::string NameField(const RuntimeConfiguration& configuration) {
    return {configuration.crashReporterName.begin(), configuration.crashReporterName.end()};
}

std::string Padded(std::string name) {
    name.resize(64, '\0');
    return name;
}

TEST(RuntimeSettings, DefaultsWithoutTheSection) {
    const LoadOutcome outcome = Loaded("other { max_active_game_instances = 7; }");
    EXPECT_TRUE(outcome.succeeded);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.configuration.version, 1U);
    EXPECT_EQ(outcome.configuration.maxActiveInstances, 1U);
    EXPECT_EQ(outcome.configuration.antiTamperSolution, 0U);
    EXPECT_EQ(NameField(outcome.configuration), Padded(""));
}

TEST(RuntimeSettings, EveryKey) {
    const LoadOutcome outcome = LoadedSection(
        "max_active_game_instances = 3;\n"
        "anti_tamper_solution_name = \"denuvo 4\";\n"
        "crash_reporter_name = \"CrashReporter\";\n");
    EXPECT_TRUE(outcome.succeeded);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.configuration.version, 1U);
    EXPECT_EQ(outcome.configuration.maxActiveInstances, 3U);
    EXPECT_EQ(outcome.configuration.antiTamperSolution, 3U);
    EXPECT_EQ(NameField(outcome.configuration), Padded("CrashReporter"));
}

// Set directly, so that the test does not depend on the grammar of the configuration file.
TEST(RuntimeSettings, InstancesAreTheLow32Bits) {
    struct Case {
        std::int64_t stored;
        std::uint32_t loaded;
    };
    for (const Case& number : std::vector<Case>{{0, 0},
                                                {-1, 4294967295U},
                                                {2147483647, 2147483647U},
                                                {-2147483648LL, 2147483648U},
                                                {4294967297LL, 1}}) {
        ConfigDocument document;
        document.OpenSection("runtime_configuration").integers.Get("max_active_game_instances") =
            number.stored;
        RuntimeConfiguration configuration;
        EXPECT_TRUE(LoadRuntimeSettings(configuration, document));
        EXPECT_EQ(configuration.maxActiveInstances, number.loaded) << number.stored;
    }
}

TEST(RuntimeSettings, NoneCannotBeChosenByName) {
    for (const std::string name : {"None", "none", "Nonexistent"}) {
        const LoadOutcome outcome =
            LoadedSection("anti_tamper_solution_name = \"" + name +
                          "\";\ncrash_reporter_name = \"CrashReporter\";\n");
        EXPECT_FALSE(outcome.succeeded) << name;
        EXPECT_EQ(
            outcome.output,
            "[Info] Please provide name of a supported anti-tamper solution, if the one being "
            "used is not specifically listed, use 'Generic'.\n")
            << name;
        // No longer read.
        EXPECT_EQ(NameField(outcome.configuration), Padded("")) << name;
    }
}

TEST(RuntimeSettings, UnknownSolutionListsTheTableFirst) {
    const LoadOutcome outcome =
        LoadedSection("anti_tamper_solution_name = \"Custom protector\";\n");
    EXPECT_FALSE(outcome.succeeded);
    EXPECT_EQ(
        outcome.output,
        "[Err!] Called with an unsupported anti-tamper solution name: 'Custom protector'. The "
        "following are supported:\n"
        "[Info] Solution name: 'None'.\n"
        "[Info] Solution name: 'Generic'.\n"
        "[Info] Solution name: 'Arxan'.\n"
        "[Info] Solution name: 'Denuvo'.\n"
        "[Info] Solution name: 'Themida'.\n"
        "[Info] Solution name: 'StarForce'.\n"
        "[Info] Solution name: 'VMProtect'.\n"
        "[Info] Solution name: 'Steam DRM'.\n"
        "[Info] Solution name: 'AppSign'.\n"
        "[Info] Please provide name of a supported anti-tamper solution, if the one being used "
        "is not specifically listed, use 'Generic'.\n");
}

TEST(RuntimeSettings, EmptySolutionNameFails) {
    ConfigDocument document;
    document.OpenSection("runtime_configuration").strings.Get("anti_tamper_solution_name") = "";
    RuntimeConfiguration configuration;
    CapturedOutput output;
    EXPECT_FALSE(LoadRuntimeSettings(configuration, document));
    EXPECT_NE(output.Take().find("solution name: ''. The following"), std::string::npos);
}

struct ReporterNameCase {
    const char* description;
    std::string name;
    std::string field;
};

TEST(RuntimeSettings, CrashReporterNameFillsItsFieldAndIsCutToIt) {
    const std::vector<ReporterNameCase> cases = {
        {"empty", "", Padded("")},
        {"63 bytes", std::string(63, 'a'), Padded(std::string(63, 'a'))},
        {"64 bytes", std::string(64, 'a'), std::string(64, 'a')},
        {"65 bytes", std::string(64, 'a') + "b", std::string(64, 'a')},
        {"cut within a character", std::string(63, 'a') + "\xC3\xA4",
         std::string(63, 'a') + "\xC3"},
        {"ends at a zero byte", std::string("ab\0cd", 5), Padded("ab")},
    };
    for (const ReporterNameCase& named : cases) {
        ConfigDocument document;
        document.OpenSection("runtime_configuration").strings.Get("crash_reporter_name") =
            named.name;
        RuntimeConfiguration configuration;
        configuration.crashReporterName.fill('x');
        EXPECT_TRUE(LoadRuntimeSettings(configuration, document)) << named.description;
        EXPECT_EQ(NameField(configuration), named.field) << named.description;
    }
}

TEST(RuntimeSettings, ValuesOfAnotherKindDoNotCount) {
    const LoadOutcome outcome = LoadedSection(
        "max_active_game_instances = \"5\";\n"
        "anti_tamper_solution_name = 3;\n"
        "crash_reporter_name = 4;\n");
    EXPECT_TRUE(outcome.succeeded);
    EXPECT_EQ(outcome.configuration.maxActiveInstances, 1U);
    EXPECT_EQ(outcome.configuration.antiTamperSolution, 0U);
    EXPECT_EQ(NameField(outcome.configuration), Padded(""));
}

}  // namespace
}  // namespace sealkeeper
