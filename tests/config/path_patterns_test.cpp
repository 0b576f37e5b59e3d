#include "config/path_patterns.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "config/pattern_messages.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::ScopedLogThreshold;
using test::TempDirectory;

// The messages for one pattern, given in its expanded form, at the level "Verbose".
std::string Tried(const std::string& pattern) {
    return "[Verb] GlobPaths: " + pattern + ".\n";
}

std::string TriedAndMatched(const std::string& pattern) {
    return Tried(pattern) + test::Matched(pattern);
}

std::string TriedInVain(const std::string& pattern) {
    return Tried(pattern) + test::NotMatched(pattern);
}

// A game directory with one entry of each kind. It is the current directory.
class PathPatterns : public ::testing::Test {
  protected:
    PathPatterns() {
        for (const char* name :
             {"a.txt", "b.txt", ".hidden", "bin/c.so", "bin/sub/d.so", "[x", "x.dat"}) {
            static_cast<void>(game_.WriteFile(name, "content"));
        }
        std::filesystem::create_directory(game_ / "empty");
        std::filesystem::create_directory_symlink("bin", game_ / "link_dir");
        std::filesystem::create_symlink("a.txt", game_ / "link_file");
        std::filesystem::create_symlink("nowhere", game_ / "link_dangling");
        EXPECT_EQ(mkfifo((game_ / "fifo").c_str(), 0600), 0);
    }

    // Expands with the trace on.
    static bool Glob(const std::vector<std::string>& patterns, PathSet& paths, std::string& shown) {
        const ScopedLogThreshold trace(LogLevel::Trace);
        CapturedOutput output;
        bool hasMatched = false;
        EXPECT_EQ(GlobPaths(patterns, paths, hasMatched), ResultCode::Ok);
        shown = output.Take();
        return hasMatched;
    }

    TempDirectory game_;
    ScopedCurrentDirectory inGame_{game_.Path()};
};

struct PatternCase {
    const char* pattern;
    // In the expanded form.
    const char* expanded;
    PathSet paths;
};

TEST_F(PathPatterns, ExpandEachPattern) {
    const std::vector<PatternCase> cases = {
        // Without wildcards.
        {"a.txt", "./a.txt", {"./a.txt"}},
        {"bin", "./bin", {"./bin"}},
        {"bin/", "./bin", {"./bin"}},
        {"bin\\", "./bin", {"./bin"}},
        {"bin\\sub\\d.so", "./bin/sub/d.so", {"./bin/sub/d.so"}},
        {"bin//", "./bin/", {"./bin/"}},
        {"./a.txt", "././a.txt", {"././a.txt"}},
        {"bin/../a.txt", "./bin/../a.txt", {"./bin/../a.txt"}},
        {"/a.txt", ".//a.txt", {".//a.txt"}},
        {"/", "./", {"./"}},
        {".", "./.", {"./."}},
        {"", ".", {"."}},
        {".hidden", "./.hidden", {"./.hidden"}},
        {"link_file", "./link_file", {"./link_file"}},
        {"link_dir", "./link_dir", {"./link_dir"}},
        {"[x", "./[x", {"./[x"}},
        {"empty", "./empty", {"./empty"}},
        {"a.txt/", "./a.txt", {"./a.txt"}},
        // Neither a file nor a directory.
        {"missing", "./missing", {}},
        {"fifo", "./fifo", {}},
        {"link_dangling", "./link_dangling", {}},
        {"a.txt/x", "./a.txt/x", {}},
        {"[ab].txt", "./[ab].txt", {}},
        // With wildcards.
        {"?.txt", "./?.txt", {"./a.txt", "./b.txt"}},
        {"*.txt", "./*.txt", {"./a.txt", "./b.txt"}},
        {"b*", "./b*", {"./b.txt", "./bin"}},
        {"b*/", "./b*", {"./b.txt", "./bin"}},
        {"bin\\*", "./bin/*", {"./bin/c.so", "./bin/sub"}},
        {"bin/*/*", "./bin/*/*", {"./bin/sub/d.so"}},
        {"*/c.so", "./*/c.so", {"./bin/c.so", "./link_dir/c.so"}},
        {"link_d*", "./link_d*", {"./link_dir", "./link_dangling"}},
        {"fif?", "./fif?", {"./fifo"}},
        {".hid*", "./.hid*", {"./.hidden"}},
        {"[ab]*.txt", "./[ab]*.txt", {"./a.txt", "./b.txt"}},
        {"*.none", "./*.none", {}},
        {"empty/*", "./empty/*", {}},
        {"missing/*", "./missing/*", {}},
        {"a.txt/*", "./a.txt/*", {}},
    };
    for (const PatternCase& pattern : cases) {
        PathSet paths;
        std::string shown;
        EXPECT_EQ(Glob({pattern.pattern}, paths, shown), !pattern.paths.empty()) << pattern.pattern;
        EXPECT_EQ(paths, pattern.paths) << pattern.pattern;
        EXPECT_EQ(shown, pattern.paths.empty() ? TriedInVain(pattern.expanded)
                                               : TriedAndMatched(pattern.expanded))
            << pattern.pattern;
    }
}

TEST_F(PathPatterns, AStarLeavesHiddenFilesOut) {
    PathSet paths;
    std::string shown;
    EXPECT_TRUE(Glob({"*"}, paths, shown));
    EXPECT_EQ(shown, TriedAndMatched("./*"));
    EXPECT_FALSE(paths.contains("./.hidden"));
    EXPECT_FALSE(paths.contains("./."));
    EXPECT_TRUE(paths.contains("./fifo"));
    EXPECT_TRUE(paths.contains("./empty"));
}

TEST_F(PathPatterns, NoPatternMatchesNothing) {
    PathSet paths;
    std::string shown;
    EXPECT_FALSE(Glob({}, paths, shown));
    EXPECT_EQ(shown, "");
    EXPECT_TRUE(paths.empty());
}

TEST_F(PathPatterns, NoFailureStopsTheLoop) {
    PathSet paths;
    std::string shown;
    EXPECT_TRUE(Glob({"missing", "b.txt", "*.none", "?.txt", "a.txt"}, paths, shown));
    EXPECT_EQ(shown, TriedInVain("./missing") + TriedAndMatched("./b.txt") +
                         TriedInVain("./*.none") + TriedAndMatched("./?.txt") +
                         TriedAndMatched("./a.txt"));
    EXPECT_EQ(paths, (PathSet{"./a.txt", "./b.txt"}));
}

TEST_F(PathPatterns, AddsToWhatTheSetHolds) {
    PathSet paths = {"./kept"};
    std::string shown;
    EXPECT_FALSE(Glob({"missing"}, paths, shown));
    EXPECT_EQ(paths, PathSet{"./kept"});
    EXPECT_TRUE(Glob({"a.txt"}, paths, shown));
    EXPECT_EQ(paths, (PathSet{"./kept", "./a.txt"}));
}

TEST_F(PathPatterns, TraceIsNotShownByTheProgram) {
    const ScopedLogThreshold verbose(LogLevel::Verbose);
    PathSet paths;
    CapturedOutput output;
    bool hasMatched = false;
    EXPECT_EQ(GlobPaths({"a.txt"}, paths, hasMatched), ResultCode::Ok);
    EXPECT_TRUE(hasMatched);
    EXPECT_EQ(output.Take(),
              "[Info] The following matched certain files in the target directory: './a.txt'.\n");
}

TEST_F(PathPatterns, APatternWithAZeroByteMatchesNothing) {
    PathSet paths;
    std::string shown;
    EXPECT_FALSE(Glob({std::string("a.txt\0junk", 10), std::string("*.txt\0", 6)}, paths, shown));
    EXPECT_TRUE(paths.empty());
}

}  // namespace
}  // namespace sealkeeper
