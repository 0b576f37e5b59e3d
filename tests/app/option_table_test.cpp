#include "app/option_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace sealkeeper {
namespace {

// The option's name, "" for a positional argument, or "faulty" for a fault.
std::string Matched(const std::string& argument) {
    const MatchedArgument matched = MatchArgument(argument);
    switch (matched.kind) {
        case ArgumentKind::OptionName:
            return std::string(matched.option->name);
        case ArgumentKind::Faulty:
            return "faulty";
        case ArgumentKind::Positional:
            break;
    }
    return "";
}

struct MatchCase {
    std::string argument;
    std::string expected;
};

class OptionMatching : public testing::TestWithParam<MatchCase> {};

TEST_P(OptionMatching, SelectsByNameOrUniquePrefix) {
    EXPECT_EQ(Matched(GetParam().argument), GetParam().expected)
        << "'" << GetParam().argument << "'";
}

INSTANTIATE_TEST_SUITE_P(
    ExactNames, OptionMatching,
    testing::Values(MatchCase{"-incert", "-incert"}, MatchCase{"-incrl", "-incrl"},
                    MatchCase{"-inkey", "-inkey"}, MatchCase{"-target_file", "-target_file"},
                    MatchCase{"-outname", "-outname"}, MatchCase{"-productid", "-productid"},
                    MatchCase{"-target_game_dir", "-target_game_dir"},
                    MatchCase{"verify", "verify"}, MatchCase{"list", "list"},
                    MatchCase{"-gamedev", "-gamedev"}, MatchCase{"-?", "-?"},
                    MatchCase{"--help", "--help"}, MatchCase{"--version", "--version"},
                    MatchCase{"-v", "-v"}));

INSTANTIATE_TEST_SUITE_P(UniquePrefixes, OptionMatching,
                         testing::Values(MatchCase{"-prod", "-productid"},
                                         MatchCase{"-p", "-productid"},
                                         MatchCase{"-target_g", "-target_game_dir"},
                                         MatchCase{"-target_f", "-target_file"},
                                         MatchCase{"-o", "-outname"}, MatchCase{"-g", "-gamedev"},
                                         MatchCase{"-ink", "-inkey"}, MatchCase{"-ince", "-incert"},
                                         MatchCase{"--v", "--version"}, MatchCase{"--h", "--help"},
                                         MatchCase{"ver", "verify"}, MatchCase{"v", "verify"},
                                         MatchCase{"li", "list"}, MatchCase{"l", "list"}));

INSTANTIATE_TEST_SUITE_P(AmbiguousPrefixes, OptionMatching,
                         testing::Values(MatchCase{"-in", "faulty"}, MatchCase{"-inc", "faulty"},
                                         MatchCase{"-t", "faulty"}, MatchCase{"-target_", "faulty"},
                                         MatchCase{"-", "faulty"}, MatchCase{"--", "faulty"},
                                         MatchCase{"", "faulty"}));

INSTANTIATE_TEST_SUITE_P(
    UnknownOptions, OptionMatching,
    testing::Values(MatchCase{"-config_file", "faulty"}, MatchCase{"-V", "faulty"},
                    MatchCase{"-Productid", "faulty"}, MatchCase{"--productid", "faulty"},
                    MatchCase{"-help", "faulty"}, MatchCase{"---help", "faulty"},
                    MatchCase{"--verify", "faulty"}, MatchCase{"-verify", "faulty"},
                    MatchCase{"-productid X", "faulty"}, MatchCase{"-productidx", "faulty"},
                    MatchCase{"-vx", "faulty"}, MatchCase{"-=x", "faulty"}));

INSTANTIATE_TEST_SUITE_P(Positionals, OptionMatching,
                         testing::Values(MatchCase{"game.cfg", ""}, MatchCase{"verifyx", ""},
                                         MatchCase{"Verify", ""}, MatchCase{"verify=dir", ""},
                                         MatchCase{"productid", ""}, MatchCase{"a=b", ""},
                                         MatchCase{"?", ""}));

TEST(OptionMatching, SplitsAtTheFirstEqualsSign) {
    const MatchedArgument matched = MatchArgument("-productid=a=b");
    ASSERT_EQ(matched.kind, ArgumentKind::OptionName);
    EXPECT_EQ(matched.option->name, "-productid");
    EXPECT_EQ(matched.attachedValue, "a=b");
}

TEST(OptionMatching, KeepsAnEmptyAttachedValue) {
    EXPECT_EQ(MatchArgument("-outname=").attachedValue, "");
    EXPECT_EQ(MatchArgument("-outname").attachedValue, std::nullopt);
}

TEST(OptionMatching, SplitsAbbreviationsToo) {
    const MatchedArgument matched = MatchArgument("-prod=ID");
    ASSERT_EQ(matched.kind, ArgumentKind::OptionName);
    EXPECT_EQ(matched.option->name, "-productid");
    EXPECT_EQ(matched.attachedValue, "ID");
}

}  // namespace
}  // namespace sealkeeper
