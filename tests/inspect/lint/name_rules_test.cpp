// Names of sections and keys, and their places.
#include <gtest/gtest.h>

#include "config/config_names.h"
#include "inspect/lint/lint_expectations.h"

namespace sealkeeper {
namespace {

using test::EndsAfter;
using test::ExpectLinted;
using test::ExpectNothingTold;
using test::NoPathList;
using test::NoVersion;
using test::WithOnlySearchOptions;
using test::WithRuntime;
using test::WithSearchOptions;

constexpr const char* kVersionKey = "config_info { version = 2; }\n";
constexpr const char* kBraceCure = "Write a blank before the '{'.";

TEST(LintSectionNames, TellsOfUnknownOnes) {
    ExpectLinted({
        {"a slip",
         std::string(kVersionKey) + "@search_option { include_paths = [\"a\"] }\n",
         {NoPathList(),
          {"'search_option' is no section that the tool knows, so everything in the braces that follow is ignored.",
           "Write 'search_options' if that is meant."}},
         1},
        {"nothing near",
         WithSearchOptions("") + "@foo { include_paths = 1; }\n",
         {{"'foo' is no section that the tool knows, so everything in the braces that follow is ignored.",
           "Remove it, or write one of 'config_info', 'search_options' and 'runtime_configuration'."}}},
        {"nothing near, without braces",
         WithSearchOptions("") + "@foo bar\n",
         {{"'foo' is no section that the tool knows, so everything from line 6 on is ignored.",
           "Remove it, or write one of 'config_info', 'search_options' and 'runtime_configuration'."}}},
    });
}

TEST(LintSectionNames, TellsOfABraceInTheName) {
    ExpectLinted({
        {"that takes the next section's body",
         std::string(kVersionKey) +
             "@search_options{ include_paths = [\"a\"] }\nruntime_configuration "
             "{ }\n",
         {NoPathList(),
          {"The name of this section is read as 'search_options{', so everything in the braces that follow is ignored.",
           kBraceCure}},
         1},
        {"of the last one",
         WithSearchOptions("") + "@runtime_configuration{\nmax_active_game_instances = 1;\n}\n",
         {{"The name of this section is read as 'runtime_configuration{', so everything from line 6 on is ignored.",
           kBraceCure}}},
    });
}

TEST(LintSectionNames, TellsOfValuesOutsideOfAnySection) {
    ExpectLinted({
        {"before a section, whose body they take",
         "@version = 2;\nsearch_options { include_paths = [\"a\"] }\n",
         {NoVersion(),
          NoPathList(),
          {"'version' stands outside of any section and is taken for the name of one, so everything in the braces that follow is ignored.",
           "Move it into the braces of 'config_info'."}},
         2},
        {"at the end",
         WithSearchOptions("") + "@max_active_game_instances=1;\n",
         {{"'max_active_game_instances' stands outside of any section and is taken for the name of one, so everything from line 6 on is ignored.",
           "Move it into the braces of 'runtime_configuration'."}}},
    });
}

TEST(LintSectionHeaders, TellsWhatStandsBeforeTheBrace) {
    ExpectLinted({
        {"words",
         std::string(kVersionKey) + "search_options @of mine { include_paths = [\"a\"] }\n",
         {{"What stands between 'search_options' and its '{' is ignored.", "Remove it."}}},
        {"a whole section",
         "@config_info\n@version = 2;\n}\nsearch_options { include_paths = [\"a\"] }\n",
         {NoPathList(),
          NoVersion(),
          {"'config_info' has no '{' before this, so all up to the '{' on line 4 is ignored.",
           "Write '{' after the name of the section."}},
         1},
        {"a comment with a brace",
         std::string(kVersionKey) + "@search_options # the @{ way\n@{ include_paths = [\"a\"] }\n",
         {NoPathList(),
          {"The '{' that opens 'search_options' stands in a comment.",
           "Write the '{' right after the name."},
          EndsAfter(2, 3)}},
    });
}

TEST(LintSectionHeaders, SignsOfOtherLanguagesAreHarmless) {
    ExpectNothingTold(
        {std::string(kVersionKey) + "search_options = { include_paths = [\"a\"] };\n",
         std::string(kVersionKey) + "Search_Options:\n{ Include_Paths [\"a\"] }\n",
         std::string(kVersionKey) + "search_options # mine\n\n{ include_paths = [\"a\"] }\n"});
}

TEST(LintSectionNames, TellsOfOneInsideAnother) {
    ExpectLinted({
        {"not closed before",
         "config_info {\nversion = 2;\nsearch_options @{ include_paths = [\"a\"] }\n",
         {NoPathList(),
          {"'search_options' begins before 'config_info' is closed, so everything from line 3 on is ignored.",
           "Write '}' at the end of 'config_info'."}},
         1},
        {"without a blank before its brace",
         "config_info {\nversion = 2;\nsearch_options{ @include_paths = [\"a\"] }\n",
         {NoPathList(),
          {"'search_options' begins before 'config_info' is closed, so everything from line 3 on is ignored.",
           "Write '}' at the end of 'config_info'."}},
         1},
    });
}

TEST(LintUnclosedSection, TellsOfOne) {
    const test::Told unclosed = {"'search_options' has no '}' at its end.",
                                 "Write '}' after its last value."};
    ExpectLinted({
        {"none",
         std::string(kVersionKey) + "@search_options { include_paths = [\"a\"]\n",
         {unclosed}},
        {"in a comment",
         std::string(kVersionKey) + "@search_options { include_paths = [\"a\"]\n# }",
         {unclosed}},
        {"one too many",
         WithSearchOptions("") + "@}\n",
         {{"This '}' closes no section and is read as the name of one, so everything from line 6 on is ignored.",
           "Remove it."}}},
    });
    ExpectNothingTold({std::string(kVersionKey) + "search_options { include_paths = [\"a\"] }"});
}

TEST(LintKeyNames, TellsOfUnknownOnes) {
    ExpectLinted({
        {"a slip",
         WithSearchOptions("@Exclude_Extension = [\".a\"]"),
         {{"'exclude_extension' is no key that the tool knows in 'search_options', so it is ignored.",
           "Write 'exclude_extensions' if that is meant."}}},
        {"a colon",
         std::string("@config_info { @version: 2; }\nsearch_options { include_paths = [\"a\"] }\n"),
         {NoVersion(),
          {"'version:' is no key that the tool knows in 'config_info', so it is ignored.",
           "Write 'version' if that is meant."}}},
        {"nothing near",
         WithSearchOptions("@foo = 5;"),
         {{"'foo' is no key that the tool knows in 'search_options', so it is ignored.",
           "Remove it, or write one of 'include_paths', 'exclude_paths', 'exclude_extensions', 'exclude_size_threshold' and 2 more."}}},
        {"another section's",
         WithRuntime("@include_paths = [\"a\"]"),
         {{"'include_paths' belongs in 'search_options', so it is ignored.",
           "Move it into the braces of 'search_options'."}}},
    });
}

TEST(LintKeysWithoutValue, TellsOfEach) {
    ExpectLinted({
        {"before another key",
         WithRuntime("crash_reporter_name =\n@max_active_game_instances = 1;"),
         {{"'crash_reporter_name' has no value before 'max_active_game_instances', so everything from line 4 on is ignored.",
           "Write the value of 'crash_reporter_name' on line 3, or remove it."}}},
        {"before the end of the section",
         WithSearchOptions("exclude_size_threshold = }\nruntime_configuration { "
                           "@max_active_game_instances = 1;"),
         {{"'exclude_size_threshold' has no value before its section ends, so everything from line 5 on is ignored.",
           "Write the value of 'exclude_size_threshold' on line 4, or remove it."}}},
        {"so that it takes another section's",
         WithSearchOptions("@exclude_size_threshold = }\nruntime_configuration { 5;"),
         {{"'exclude_size_threshold' has no value in its section and takes the one on line 5 as its own.",
           "Write its value, or remove it."}}},
        {"before the end of the file",
         std::string(kVersionKey) +
             "search_options { include_paths = [\"a\"]\n@exclude_size_threshold = "
             "\n",
         {{"'exclude_size_threshold' has no value, so everything from line 3 on is ignored.",
           "Write its value, or remove it."}}},
        {"before the end of the last section",
         WithSearchOptions("@exclude_size_threshold ="),
         {{"'exclude_size_threshold' has no value.", "Write its value, or remove it."}}},
        {"not even an equals sign",
         std::string(kVersionKey) +
             "search_options { include_paths = [\"a\"]\n@exclude_size_threshold",
         {{"The file ends in the middle of a key and its value, so everything from line 3 on is ignored.",
           "Write the value, or remove the key."}}},
        {"since the last byte is not looked at",
         std::string(kVersionKey) + "@search_options { include_paths = [\"a\"]\n"
                                    "@exclude_size_threshold = 5",
         {{"'search_options' has no '}' at its end.", "Write '}' after its last value."},
          {"'exclude_size_threshold' has no value, since the very last character of a file is not looked at.",
           "End the value with a semicolon and the file with a line break."}}},
    });
}

TEST(LintStop, TellsOfSignsWhereANameIsExpected) {
    ExpectLinted({
        {"colon",
         WithSearchOptions("") + "@: foo {}\n",
         {{"The name of a section is expected here, and no name begins with ':', so everything from line 6 on is ignored.",
           "Remove the ':', or write a name before it."}}},
        {"equals sign",
         WithSearchOptions("@= 5;"),
         {{"A key is expected here, and no key begins with '=', so everything from line 4 on is ignored.",
           "Remove the '=', or write a key before it."}}},
    });
}

TEST(LintStop, TellsOfWordsThatAreNoValues) {
    const std::string noValue =
        " is no value: neither in quotes or brackets, nor a number, true or false, so everything "
        "from line ";
    ExpectLinted({
        {"of a flag",
         WithSearchOptions("ignore_files_without_extension = @yes"),
         {{"'yes'" + noValue + "4 on is ignored.",
           "Write true or false, as in 'ignore_files_without_extension = true'."}}},
        {"of a text",
         WithRuntime("crash_reporter_name = @MyApp;"),
         {{"'MyApp'" + noValue + "3 on is ignored.", "Write \"MyApp\" in double quotes."}}},
        {"of a list",
         WithSearchOptions("exclude_extensions = @.pdb"),
         {{"'.pdb'" + noValue + "4 on is ignored.",
           "Write a list, as in 'exclude_extensions = [\".pdb\"]'."}}},
        {"of another key",
         WithSearchOptions("x = @y"),
         {{"'y'" + noValue + "4 on is ignored.",
           "Write a text in double quotes, a number with a semicolon, or remove the key."}}},
        {"in other quotes",
         WithRuntime("crash_reporter_name = @'MyApp'"),
         {{"The text of 'crash_reporter_name' is not in straight double quotes, so everything from line 3 on is ignored.",
           "Write it in straight double quotes, as in \"text\"."}}},
        {"below zero",
         WithRuntime("max_active_game_instances = @-1;"),
         {{"The number of 'max_active_game_instances' begins with '-', and there are no numbers below 0, so everything from line 3 on is ignored.",
           "Write a number in digits, and a semicolon."}}},
    });
}

TEST(LintRepeatedKeys, TellsWhatBecomesOfThem) {
    ExpectLinted(
        {{"in one section and in another of its name",
          WithOnlySearchOptions("include_paths = [\"a\"]\n@include_paths = [\"b\"]\n"
                                "exclude_size_threshold = 20;\n"
                                "@exclude_size_threshold = 30;\n"
                                "ignore_files_without_extension = true\n"
                                "@ignore_files_without_extension = 0;\n"
                                "alias_paths = ( \"a\", \"b\" )\n} search_options {\n"
                                "@alias_paths = ( \"c\", \"d\" )"),
          {{"'include_paths' stands here again and adds to the list of line 2.",
            "Write all of them under one key."},
           {"'exclude_size_threshold' stands here again and replaces the value of line 4.",
            "Keep one of them."},
           {"'ignore_files_without_extension' stands here again and replaces the value of line 6.",
            "Keep one of them."},
           {"'alias_paths' stands here again and adds to the pairs of line 8.",
            "Write all of them under one key."}}}});
}

}  // namespace
}  // namespace sealkeeper
