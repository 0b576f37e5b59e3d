// How the tool interprets the values it reads.
#include <gtest/gtest.h>

#include <string>

#include "inspect/lint/lint_expectations.h"

namespace sealkeeper {
namespace {

using test::ExpectLinted;
using test::ExpectNothingTold;
using test::HashesEverything;
using test::LintCase;
using test::NoPathList;
using test::NoVersion;
using test::Told;
using test::WithOnlySearchOptions;
using test::WithRuntime;
using test::WithSearchOptions;

constexpr const char* kPaths = "search_options { include_paths = [\"a\"] }\n";
constexpr const char* kMegabytesCure = "Write 10 to 1024 megabytes, unless this is meant.";

TEST(LintValueKinds, TellsOfValuesThatAreIgnored) {
    ExpectLinted({
        {"text for a list",
         "config_info { version = 2; }\n@search_options { include_paths = @\"a\" }\n",
         {NoPathList(),
          {"The value of 'include_paths' is a text and not a list, so it is ignored.",
           "Write 'include_paths = [\"a\"]'."}}},
        {"text for a number",
         WithSearchOptions("exclude_size_threshold = @\"20\""),
         {{"The value of 'exclude_size_threshold' is a text and not a number, so it is ignored.",
           "Write 'exclude_size_threshold = 20;'."}}},
        {"text for a version",
         std::string("@config_info { version = @\"two\" }\n") + kPaths,
         {NoVersion(),
          {"The value of 'version' is a text and not a number, so it is ignored.",
           "Write a number, as in 'version = 2;'."}}},
        {"text for a flag",
         WithSearchOptions("ignore_files_without_extension = @\"TRUE\""),
         {{"The value of 'ignore_files_without_extension' is a text and not true or false, so it is ignored.",
           "Write 'ignore_files_without_extension = true'."}}},
        {"number for a text",
         WithRuntime("crash_reporter_name = @5;"),
         {{"The value of 'crash_reporter_name' is a number and not a text, so it is ignored.",
           "Write a text, as in 'crash_reporter_name = \"CrashReporter\"'."}}},
        {"flag for a number",
         WithRuntime("max_active_game_instances = @true"),
         {{"The value of 'max_active_game_instances' is true or false and not a number, so it is ignored.",
           "Write a number, as in 'max_active_game_instances = 1;'."}}},
        {"pairs for a list",
         WithSearchOptions("exclude_extensions = @( \".a\", \".b\" )"),
         {{"The value of 'exclude_extensions' is a table of pairs and not a list, so it is ignored.",
           "Write a list, as in 'exclude_extensions = [\".pdb\"]'."}}},
    });
}

TEST(LintValueKinds, TellsOfValuesThatAreRefused) {
    const char* const cure =
        "Remove it and give the directory as -target_game_dir on the command line.";
    ExpectLinted({
        {"aliases in a list",
         WithSearchOptions("alias_paths = @[ \"a\", \"x\" ]"),
         {{"The value of 'alias_paths' is a list and not a table of pairs, so the tool refuses the file.",
           "Write a table of pairs, as in 'alias_paths = ( [\"Old\", \"New\"] );'."}}},
        {"working directory",
         WithSearchOptions("working_directory = @\"x\""),
         {{"The tool refuses a file that has a 'working_directory'.", cure}}},
        {"working directory that is a number",
         WithSearchOptions("working_directory = @5;"),
         {{"The tool takes no 'working_directory' from the file.", cure}}},
    });
}

TEST(LintValueKinds, NumberIsAFlag) {
    ExpectNothingTold({WithSearchOptions("ignore_files_without_extension = 1;")});
}

TEST(LintVersion, TellsOfAnyButTwo) {
    ExpectLinted({
        {"none", kPaths, {NoVersion()}, 1},
        {"none in its section", std::string("@config_info { }\n") + kPaths, {NoVersion()}},
        {"three",
         std::string("config_info { version = @3; }\n") + kPaths,
         {{"The version is 3, and the tool refuses every one but 2.", "Write 'version = 2;'."}}},
        {"the last of several",
         std::string("config_info { version = 2; @version = @1; }\n") + kPaths,
         {{"'version' stands here again and replaces the value of line 1.", "Keep one of them."},
          {"The version is 1, and the tool refuses every one but 2.", "Write 'version = 2;'."}}},
    });
}

TEST(LintPathLists, TellsOfBothOfNeitherAndOfAnEmptyOne) {
    ExpectLinted({
        {"both",
         WithOnlySearchOptions("include_paths = [\"a\"]\nexclude_paths = @[ ]"),
         {{"There are both include_paths and exclude_paths, so the tool refuses the file.",
           "Keep one of them."}}},
        {"neither",
         "config_info { version = 2; }\n@search_options { exclude_extensions = [\".a\"] }\n",
         {NoPathList()}},
        {"no section", "config_info { version = 2; }\n", {NoPathList()}, 1},
        {"empty", WithOnlySearchOptions("include_paths = @[ ]"), {HashesEverything()}},
    });
}

TEST(LintPathLists, NothingNeedBeExcluded) {
    ExpectNothingTold({WithOnlySearchOptions("exclude_paths = [ ]")});
}

TEST(LintPatterns, TellsOfPathsThatAreWrittenOtherwiseThanTheToolDoes) {
    const char* const included = ", which the paths in the catalogue then have as well.";
    const char* const excluded = ", so it excludes nothing that is found in a directory.";
    const auto detour = [](const char* pattern, const char* effect, const char* cure) {
        return Told{std::string("The pattern '") + pattern +
                        "' has a directory '.' or an empty one in it" + effect,
                    cure};
    };
    ExpectLinted({
        {"included",
         WithOnlySearchOptions(R"(include_paths = ["@./a", "@a//b", "@.", "@a/."])"),
         {detour("./a", included, "Write \"a\"."), detour("a//b", included, "Write \"a/b\"."),
          detour(".", included, "Write the names of directories and files."),
          detour("a/.", included, "Write \"a\".")}},
        {"excluded",
         WithOnlySearchOptions(R"(exclude_paths = ["@./Logs", "@Logs//"])"),
         {detour("./Logs", excluded, "Write \"Logs\"."),
          detour("Logs//", excluded, "Write \"Logs\".")}},
    });
}

// A part of a path is another path.
TEST(LintPatterns, TellsWhatToWriteInFull) {
    const std::string name(100, '0');
    ExpectLinted({{"long",
                   WithOnlySearchOptions("include_paths = [\"@./" + name + "\"]"),
                   {{"The pattern './" + std::string(58, '0') +
                         "...' has a directory '.' or an empty one in it, which the paths in the "
                         "catalogue then have as well.",
                     "Write \"" + name + "\"."}}}});
}

TEST(LintPatterns, TellsOfPathsThatGoBack) {
    const auto back = [](const std::string& pattern, const char* effect) {
        return Told{"The pattern '" + pattern + "' goes back by '..'" + effect,
                    "Write the path without '..'."};
    };
    ExpectLinted({
        {"included",
         WithOnlySearchOptions(R"(include_paths = ["@a/../b", "@.../../x", "@./a/.."])"),
         {back("a/../b", ", which the paths in the catalogue then have as well."),
          back(".../../x", ", which the paths in the catalogue then have as well."),
          back("./a/..", ", which the paths in the catalogue then have as well.")}},
        {"excluded",
         WithOnlySearchOptions(R"(exclude_paths = ["@a/b/../../c"])"),
         {back("a/b/../../c", ", so it excludes nothing that is found in a directory.")}},
    });
    ExpectNothingTold(
        {WithOnlySearchOptions(R"(include_paths = ["../a", "..a/b", "a..", "a/..b"])")});
}

// The cure must also work for a path from the root of the file system. The linter cannot tell which
// part of it leads to the game.
TEST(LintPatterns, TellsThatAnAbsolutePathIsTakenFromTheGameDirectory) {
    const auto told = [](const std::string& pattern, const char* effect) {
        return Told{"The pattern '" + pattern +
                        "' begins with '/', but patterns are taken from the game directory" +
                        effect,
                    "Write the path from the game directory on, without a '/' before it."};
    };
    const char* const included =
        ": with the '/' verify looks for its files outside of the game and fails.";
    const char* const excluded = ": with the '/' it excludes nothing that is found in a directory.";
    ExpectLinted({
        {"included",
         WithOnlySearchOptions(R"(include_paths = ["@/Content", "@/home/me/game//a", "@\a"])"),
         {told("/Content", included), told("/home/me/game//a", included), told("\\a", included)}},
        {"excluded",
         WithOnlySearchOptions(R"(exclude_paths = ["@/Logs"])"),
         {told("/Logs", excluded)}},
    });
}

TEST(LintPatterns, TellsOfDrivesAndOfTwoStars) {
    const char* const cure = "Write the name of a directory, which stands for all files below it.";
    ExpectLinted({
        {"drive",
         WithOnlySearchOptions(R"(include_paths = ["@C:\Games", "@d:/x"])"),
         {{"The pattern 'C:\\Games' begins with a drive, but patterns are taken from the game directory.",
           "Write the path from the game directory on."},
          {"The pattern 'd:/x' begins with a drive, but patterns are taken from the game directory.",
           "Write the path from the game directory on."}}},
        {"two stars",
         WithOnlySearchOptions(R"(include_paths = ["@Content/**", "@**/*.pak"])"),
         {{"'**' in the pattern 'Content/**' is no more than '*', which matches within one directory.",
           cure},
          {"'**' in the pattern '**/*.pak' is no more than '*', which matches within one directory.",
           cure}}},
    });
}

TEST(LintPatterns, PlainOnes) {
    ExpectNothingTold({WithOnlySearchOptions(
        R"(include_paths = ["a", "a/", "a\b", "*.exe", "a/*/b?", "..", "a.b", ".hidden", "Äö", "*"])")});
}

TEST(LintExtensions, TellsOfThoseThatNoFileHas) {
    ExpectLinted(
        {{"each",
          WithSearchOptions("exclude_extensions = [\"@pdb\", \"@*.pdb\", \"@.a,.b\", "
                            "\"@.tar.gz\", \"@.\", \"@.a.\", \"@a.\", \"@x/.a\", \".pdb\"]"),
          {{"The extension 'pdb' has no dot at its start, so no file has it.", "Write \".pdb\"."},
           {"The extension '*.pdb' has a wildcard in it, which is only a character here.",
            "Write \".pdb\"."},
           {"The extension '.a,.b' is one extension to the tool, and no file has it.",
            "Write each in quotes of its own, as in \".pdb\", \".log\"."},
           {"The extension '.tar.gz' has two dots, but an extension begins at the last one.",
            "Write \".gz\"."},
           {"The extension '.' ends in a dot, so no file has it.", "Write it as in \".pdb\"."},
           {"The extension '.a.' ends in a dot, so no file has it.", "Write it as in \".pdb\"."},
           {"The extension 'a.' has no dot at its start, so no file has it.",
            "Write it as in \".pdb\"."},
           {"The extension 'x/.a' has a directory in it, which no extension has.",
            "Write \".a\"."}}}});
}

// Whether it is wrong depends on the files of the game, which the linter does not see.
TEST(LintExtensions, SaysNothingOfLetterCase) {
    ExpectLinted({{"upper case",
                   WithSearchOptions("exclude_extensions = [\".PDB\", \".Log\", \".log\"]"),
                   {}}});
}

TEST(LintAliases, TellsOfRefusedAndRepeatedOnes) {
    const char* const cure = "Write a part of a path inside the game directory.";
    ExpectLinted({
        {"refused",
         WithSearchOptions(R"(alias_paths = ( ["@../a", "@C:/x"] );)"),
         {{"The alias part '../a' has '..' in it, so the tool refuses the file.", cure},
          {"The alias part 'C:/x' has ':' in it, so the tool refuses the file.", cure}}},
        {"repeated",
         WithSearchOptions(R"(alias_paths = ( ["a", "x"], ["b", "x"], ["@a", "y"] );)"),
         {{"The alias 'a' stands here again, and its first replacement is kept.",
           "Remove one of them."}}},
    });
}

TEST(LintSizeThreshold, TellsOfUnusualOnes) {
    ExpectLinted({
        {"zero",
         WithSearchOptions("exclude_size_threshold = @0;"),
         {{"A size threshold of 0 switches the rule off, so that files of any size are hashed.",
           kMegabytesCure}}},
        {"below ten",
         WithSearchOptions("exclude_size_threshold = @9;"),
         {{"The size threshold leaves out every file above 9 MB that is found in a directory.",
           kMegabytesCure}}},
        {"above 1024",
         WithSearchOptions("exclude_size_threshold = @1025;"),
         {{"The size threshold of 1025 MB is above the recommended maximum of 1024 MB.",
           kMegabytesCure}}},
        {"a million",
         WithSearchOptions("exclude_size_threshold = @1000000;"),
         {{"The size threshold of 1000000 MB is above the recommended maximum of 1024 MB.",
           kMegabytesCure}}},
        {"bytes",
         WithSearchOptions("exclude_size_threshold = @1024000000;"),
         {{"The size threshold is in megabytes, and 1024000000 of them are more than any file has.",
           "Write 'exclude_size_threshold = 1024;' if bytes were meant."}}},
    });
    ExpectNothingTold({WithSearchOptions("exclude_size_threshold = 10;"),
                       WithSearchOptions("exclude_size_threshold = 1024;")});
}

TEST(LintLargeNumbers, TellsHowTheyAreRead) {
    ExpectLinted({
        {"threshold below zero",
         WithSearchOptions("exclude_size_threshold = @3000000000;"),
         {{"'3000000000' is too large for a number and is read as -1294967296, so no file that is found in a directory is hashed.",
           "Write a smaller number, as in 'exclude_size_threshold = 1024;'."}}},
        {"threshold that begins again",
         WithSearchOptions("exclude_size_threshold = @4294967297;"),
         {{"'4294967297' is too large for a number and is read as 1.",
           "Write a smaller number, as in 'exclude_size_threshold = 1024;'."}}},
        {"version",
         std::string("config_info { version = @4294967298; }\n") + kPaths,
         {{"'4294967298' is too large for a number and is read as 2.",
           "Write a smaller number, as in 'version = 2;'."}}},
        {"instances",
         WithRuntime("max_active_game_instances = @99999999999999999999999;"),
         {{"'99999999999999999999999' is too large for a number and is read as 4135583743.",
           "Write a smaller number, as in 'max_active_game_instances = 1;'."}}},
    });
}

TEST(LintMaxInstances, TellsOfNoneAndOfTooMany) {
    const char* const cure =
        "Write how many may run at once, as in 'max_active_game_instances = 1;'.";
    ExpectLinted({
        {"none",
         WithRuntime("max_active_game_instances = @0;"),
         {{"The number of instances of the game that may run is 0.", cure}}},
        {"as if minus one",
         WithRuntime("max_active_game_instances = @4294967295;"),
         {{"The number of instances of the game that may run is 4294967295, which is hardly a limit.",
           cure}}},
    });
    ExpectNothingTold({WithRuntime("max_active_game_instances = 4;")});
}

LintCase SolutionCase(const std::string& name, const std::string& message,
                      const std::string& cure) {
    return {"solution",
            WithRuntime("anti_tamper_solution_name = \"@" + name + "\""),
            {{"'" + name + "' " + message, cure}}};
}

TEST(LintAntiTamperSolution, TellsWhichIsTaken) {
    const std::string none =
        "is taken for 'None', which cannot be chosen, so the tool writes nothing and fails.";
    const std::string unknown =
        "is no anti-tamper solution that the tool knows, so it writes nothing and fails.";
    const std::string generic =
        "Write 'Generic' for a solution that is none of Generic, Arxan, Denuvo, Themida, StarForce, VMProtect, Steam DRM and AppSign.";
    ExpectLinted({
        SolutionCase("None", none, "Remove the key if there is no solution."),
        SolutionCase("Nonexistent", none, "Remove the key if there is no solution."),
        SolutionCase("Denuvo with Arxan", "names several solutions, of which 'Arxan' is taken.",
                     "Write the name of one."),
        SolutionCase("Marxan", "is taken for 'Arxan', since these letters are part of it.",
                     "Write 'Arxan' if that is meant, or 'Generic'."),
        SolutionCase("Custom", unknown, generic),
        SolutionCase("", unknown, generic),
        SolutionCase("Denovo", unknown, "Write 'Denuvo' if that is meant."),
    });
}

TEST(LintAntiTamperSolution, KnownOnes) {
    for (const char* const name : {"VMProtect 3.5", "denuvo", "Steam DRM", "GENERIC"}) {
        ExpectNothingTold(
            {WithRuntime(std::string("anti_tamper_solution_name = \"") + name + "\"")});
    }
}

TEST(LintCrashReporter, TellsOfNamesThatFillTheirField) {
    const auto named = [](std::size_t length) {
        return WithRuntime("crash_reporter_name = \"@" + std::string(length, 'x') + "\"");
    };
    ExpectLinted({
        {"no room for a zero byte",
         named(64),
         {{"The name of the crash reporter has 64 bytes, which leaves no room for the zero byte after it.",
           "Write a name of at most 63 bytes."}}},
        {"too long",
         named(65),
         {{"The name of the crash reporter has 65 bytes, of which only the first 64 are kept.",
           "Write a name of at most 63 bytes."}}},
    });
    ExpectNothingTold({WithRuntime("crash_reporter_name = \"" + std::string(63, 'x') + "\"")});
}

}  // namespace
}  // namespace sealkeeper
