// Numbers, flags and texts that end elsewhere than was meant.
#include <gtest/gtest.h>

#include "inspect/lint/lint_expectations.h"

namespace sealkeeper {
namespace {

using test::EndsAfter;
using test::ExpectLinted;
using test::ExpectNothingTold;
using test::NoPathList;
using test::NoVersion;
using test::WithRuntime;
using test::WithSearchOptions;

TEST(LintNumberEnds, TellsOfANumberWithoutAnySemicolonAfterIt) {
    ExpectLinted(
        {{"version",
          "@config_info { version = @2 }\nsearch_options { include_paths = [\"a\"] }\n",
          {NoPathList(),
           NoVersion(),
           {"The number of 'version' has no semicolon after it, so everything from line 1 on is ignored.",
            "Write 'version = 2;'."}},
          1}});
}

TEST(LintNumberEnds, NamesTheKeysThatANumberSwallows) {
    ExpectLinted({
        {"two keys",
         WithSearchOptions("exclude_size_threshold = @100\nexclude_extensions = [\".a\"]\n"
                           "ignore_files_without_extension = 1;"),
         {{"The number of 'exclude_size_threshold' goes on to the next semicolon, which is on line 6, so 'exclude_extensions' and 'ignore_files_without_extension' are not read.",
           "Write 'exclude_size_threshold = 100;'."}}},
        {"one key on the same line",
         WithSearchOptions("exclude_size_threshold = @100 exclude_extensions = [\".a\"];"),
         {{"The number of 'exclude_size_threshold' goes on to the next semicolon, which is on line 4, so 'exclude_extensions' is not read.",
           "Write 'exclude_size_threshold = 100;'."}}},
        {"keys after further numbers without one",
         WithSearchOptions("exclude_size_threshold = @100\na = 1\nb = 2 # b;"),
         {{"The number of 'exclude_size_threshold' goes on to the next semicolon, which is on line 6, so 'a' and 'b' are not read.",
           "Write 'exclude_size_threshold = 100;'."}}},
        {"more than four keys",
         WithSearchOptions("exclude_size_threshold = @100\na = 1\nb = 2\nc = [\"x\"]\nd = "
                           "\"y\"\ne = true\nf = 3;"),
         {{"The number of 'exclude_size_threshold' goes on to the next semicolon, which is on line 10, so 'a', 'b', 'c', 'd' and 2 more are not read.",
           "Write 'exclude_size_threshold = 100;'."}}},
        {"the end of the section and the next one",
         "config_info { version = @2 }\nsearch_options { include_paths = [\"a\"]\n"
         "exclude_size_threshold = 20; }\n",
         {NoPathList(),
          {"The number of 'version' goes on to the next semicolon, which is on line 3, so 'include_paths' and 'exclude_size_threshold' are not read.",
           "Write 'version = 2;'."}},
         1},
        {"only the end of the section",
         WithSearchOptions("exclude_size_threshold = @20 }\n;"),
         {{"The number of 'exclude_size_threshold' goes on to the next semicolon, which is on line 5, so a '}' is not read.",
           "Write 'exclude_size_threshold = 20;'."}}},
    });
}

TEST(LintNumberEnds, NamesTheKeyWhoseValueHasTheSemicolon) {
    const auto ends = [](const std::string& key, const std::string& line) {
        return test::Told{
            "The number of 'exclude_size_threshold' goes on to the next semicolon, which is inside the value of '" +
                key + "' on line " + line + ", so '" + key + "' is not read.",
            "Write 'exclude_size_threshold = 500;'."};
    };
    const std::string threshold = "exclude_size_threshold = @500\n";
    ExpectLinted({
        {"an element of a list",
         WithSearchOptions(threshold + "exclude_extensions = [\n\".a;b\", \".c\"]"),
         {ends("exclude_extensions", "6")}},
        {"between the elements of a list",
         WithSearchOptions(threshold + "exclude_extensions = [\".a\"; \".c\"]"),
         {ends("exclude_extensions", "5")}},
        {"a name in a table of pairs",
         WithSearchOptions(threshold + "alias_paths = ([\"a;b\", \"c\"]);"),
         {ends("alias_paths", "5")}},
        {"a text",
         WithSearchOptions(threshold + "working_directory = \"a;b\"\n@x = 1;"),
         {ends("working_directory", "5"), EndsAfter(4, 6)}},
    });
}

TEST(LintNumberEnds, TellsOfWhatFollowsTheDigits) {
    ExpectLinted({
        {"a unit",
         WithSearchOptions("exclude_size_threshold = @100MB;"),
         {{"'100MB' is read as the number 100, since only the digits at its start count.",
           "Write a whole number, as in 'exclude_size_threshold = 100;'."}}},
        {"a fraction",
         WithSearchOptions("exclude_size_threshold = @10.5;"),
         {{"'10.5' is read as the number 10, since only the digits at its start count.",
           "Write a whole number, as in 'exclude_size_threshold = 10;'."}}},
        {"digits in groups",
         WithSearchOptions("exclude_size_threshold = @12,000;"),
         {{"'12,000' is read as the number 12, since only the digits at its start count.",
           "Write a whole number, as in 'exclude_size_threshold = 12000;'."}}},
    });
}

TEST(LintNumberEnds, TellsOfASemicolonInAComment) {
    ExpectLinted(
        {{"with text after it",
          WithSearchOptions("exclude_size_threshold = @100 # MB; really\n"
                            "@exclude_extensions = [\".a\"]"),
          {{"The number of 'exclude_size_threshold' ends at the semicolon in a comment, and the rest of that comment is read as keys and values.",
            "Write 'exclude_size_threshold = 100;' before the comment."},
           EndsAfter(4, 5)}}});
}

TEST(LintNumberEnds, NothingIsLost) {
    ExpectNothingTold({
        WithSearchOptions("exclude_size_threshold = 100 # MB;\nexclude_extensions = [\".a\"]"),
        WithSearchOptions("exclude_size_threshold = 100 /* MB */ ;"),
        WithSearchOptions("exclude_size_threshold = 100\n;"),
        WithSearchOptions("ignore_files_without_extension = 1;exclude_size_threshold=100;"),
    });
}

TEST(LintFlagEnds, TellsWhatTheByteAfterTheWordWas) {
    ExpectLinted({
        {"closing brace",
         "config_info { version = 2; }\nsearch_options { include_paths = [\"a\"] "
         "ignore_files_without_extension = true@}\n"
         "runtime_configuration @{ max_active_game_instances = 1; }\n",
         {{"The '}' right after 'true' is passed over unread, so the section stays open.",
           "Write a blank or a semicolon before the '}'."},
          EndsAfter(2, 3)}},
        {"comment",
         WithSearchOptions("ignore_files_without_extension = FALSE@# yes"),
         {{"The first character of the comment right after 'FALSE' is passed over unread, so its text is read as a key.",
           "Write a blank or a semicolon before the comment."}}},
        {"two slashes",
         WithSearchOptions("ignore_files_without_extension = false@// @yes"),
         {{"The first character of the comment right after 'false' is passed over unread, so its text is read as a key.",
           "Write a blank or a semicolon before the comment."},
          EndsAfter(4, 4)}},
        {"longer word",
         WithSearchOptions("ignore_files_without_extension = @truely"),
         {{"'truely' is read as 'true', and its end is taken for a key.",
           "Write a blank or a semicolon after 'true'."}}},
    });
}

TEST(LintFlagEnds, BlanksAndSeparatorsMayBePassedOver) {
    ExpectNothingTold({
        WithSearchOptions("ignore_files_without_extension = true;"),
        WithSearchOptions("ignore_files_without_extension = true,"),
        WithSearchOptions("ignore_files_without_extension = true # yes"),
        WithSearchOptions("ignore_files_without_extension = true\r"),
        WithSearchOptions("ignore_files_without_extension = false#"),
    });
}

TEST(LintStringEnds, TellsOfATextOverSeveralLines) {
    ExpectLinted({
        {"another text follows",
         WithRuntime("crash_reporter_name = @\"abc\nanti_tamper_solution_name = \"Denuvo\""),
         {{"The text of 'crash_reporter_name' goes on to the next double quote, which is on line 4, so nothing between them is read.",
           "Write a double quote at the end of the text."}}},
        {"none follows",
         WithRuntime("crash_reporter_name = @\"abc\nmax_active_game_instances = 1;"),
         {{"The text of 'crash_reporter_name' has no double quote at its end, so everything from line 3 on is ignored.",
           "Write a double quote after its last character."}}},
    });
}

}  // namespace
}  // namespace sealkeeper
