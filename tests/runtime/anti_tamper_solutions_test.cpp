#include "runtime/anti_tamper_solutions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;

const std::string& ListedSolutions() {
    static const std::string text =
        "[Info] Solution name: 'None'.\n"
        "[Info] Solution name: 'Generic'.\n"
        "[Info] Solution name: 'Arxan'.\n"
        "[Info] Solution name: 'Denuvo'.\n"
        "[Info] Solution name: 'Themida'.\n"
        "[Info] Solution name: 'StarForce'.\n"
        "[Info] Solution name: 'VMProtect'.\n"
        "[Info] Solution name: 'Steam DRM'.\n"
        "[Info] Solution name: 'AppSign'.\n";
    return text;
}

struct NameCase {
    std::string name;
    std::uint32_t number;
};

TEST(AntiTamperSolutions, NumberOfAName) {
    const std::vector<NameCase> cases = {
        {"None", 0},
        {"Generic", 1},
        {"Arxan", 2},
        {"Denuvo", 3},
        {"Themida", 4},
        {"StarForce", 5},
        {"VMProtect", 6},
        {"Steam DRM", 7},
        {"AppSign", 8},
        {"denuvo", 3},
        {"VMProtect 3.5", 6},
        {"GENERIC", 1},
        {"Nonexistent", 0},
        {"Denuvo with Arxan", 2},
        {"AppSign and none", 0},
        {"xxAppSignxx", 8},
        {"DDenuvo", 3},
        {"SteSteam DRM", 7},
        // Bytes that differ only in the letter-case bit are equal, letters or not.
        {std::string("Steam\0DRM", 9), 7},
    };
    for (const NameCase& named : cases) {
        CapturedOutput output;
        EXPECT_EQ(AntiTamperSolutionFromName(named.name), named.number) << named.name;
        EXPECT_EQ(output.Take(), "") << named.name;
    }
}

TEST(AntiTamperSolutions, UnknownNameListsTheTable) {
    for (const std::string name :
         {"Custom protector", "", "my Steam", "Steam DR", "Steam-DRM", "Non", "N", "@rxan"}) {
        CapturedOutput output;
        EXPECT_EQ(AntiTamperSolutionFromName(name), 0U) << name;
        EXPECT_EQ(output.Take(), "[Err!] Called with an unsupported anti-tamper solution name: '" +
                                     name + "'. The following are supported:\n" + ListedSolutions())
            << name;
    }
}

// The solutions found in a text, each with its offset: "3@0 6@11".
std::string FoundIn(const std::string& text) {
    std::string found;
    for (const NamedSolution& named : FindAntiTamperSolutions(text)) {
        found += (found.empty() ? "" : " ") + std::to_string(named.solution) + "@" +
                 std::to_string(named.offset);
    }
    return found;
}

TEST(AntiTamperSolutions, EveryNameInATextWithItsPlace) {
    CapturedOutput output;
    EXPECT_EQ(FoundIn("VMProtect, denuvo"), "3@11 6@0");
    EXPECT_EQ(FoundIn("DDenuvo Denuvo"), "3@1");
    EXPECT_EQ(FoundIn("xxAppSign"), "8@2");
    EXPECT_EQ(FoundIn("Nonexistent"), "0@0");
    EXPECT_EQ(FoundIn("AppSig"), "");
    EXPECT_EQ(FoundIn(""), "");
    EXPECT_EQ(output.Take(), "");
}

TEST(AntiTamperSolutions, NameOfANumber) {
    const std::vector<std::string> names = {"None",      "Generic",   "Arxan",
                                            "Denuvo",    "Themida",   "StarForce",
                                            "VMProtect", "Steam DRM", "AppSign"};
    CapturedOutput output;
    for (std::uint32_t number = 0; number < names.size(); ++number) {
        EXPECT_EQ(AntiTamperSolutionName(number), names[number]);
    }
    EXPECT_EQ(output.Take(), "");
    const auto all = AntiTamperSolutionNames();
    EXPECT_EQ(std::vector<std::string>(all.begin(), all.end()), names);
}

TEST(AntiTamperSolutions, NumberOutsideTheTable) {
    CapturedOutput output;
    EXPECT_STREQ(AntiTamperSolutionName(9), "N/A");
    EXPECT_STREQ(AntiTamperSolutionName(4294967295U), "N/A");
    EXPECT_EQ(output.Take(),
              "[Err!] Called with invalid value: 9.\n"
              "[Err!] Called with invalid value: 4294967295.\n");
}

TEST(AntiTamperSolutions, ListIsInAscendingNumber) {
    CapturedOutput output;
    ListAntiTamperSolutions();
    EXPECT_EQ(output.Take(), ListedSolutions());
}

}  // namespace
}  // namespace sealkeeper
