#include "platform/glob.h"

#include <glob.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

using Paths = std::vector<std::string>;

// The matches of the C library's own `glob`, without the marks on directories.
Paths FoundBySystem(const std::string& pattern) {
    glob_t found{};
    Paths paths;
    if (glob(pattern.c_str(), GLOB_MARK | GLOB_NOSORT, nullptr, &found) == 0) {
        for (std::size_t i = 0; i < found.gl_pathc; ++i) {
            std::string path = found.gl_pathv[i];
            if (path.ends_with('/')) {
                path.pop_back();
            }
            paths.push_back(path);
        }
    }
    globfree(&found);
    return paths;
}

Paths Expand(const std::string& pattern) {
    Paths paths;
    EXPECT_EQ(ExpandGlobPattern(pattern, paths), ResultCode::Ok);
    return paths;
}

class RandomTree {
  public:
    explicit RandomTree(unsigned seed) : random_(seed) {}

    // Creates files, directories, links and FIFOs with names that are hard for patterns.
    void Make() {
        std::vector<std::string> directories = {"."};
        for (int made = 0; made < 25; ++made) {
            const std::string path = OneOf(directories) + "/" + OneOf(kNames);
            std::error_code ignored;
            switch (random_() % 7) {
                case 0:
                case 1:
                case 2:
                    if (fs::create_directory(path, ignored)) {
                        directories.push_back(path);
                    }
                    break;
                case 3:
                    static_cast<void>(mkfifo(path.c_str(), 0600));
                    break;
                case 4:
                    fs::create_symlink(OneOf(kNames), path, ignored);
                    break;
                default:
                    static_cast<void>(mknod(path.c_str(), S_IFREG | 0600, 0));
            }
        }
    }

    std::string Pattern() {
        std::string pattern = "./";
        for (std::size_t components = 1 + random_() % 4; components > 0; --components) {
            for (std::size_t parts = 1 + random_() % 3; parts > 0; --parts) {
                pattern += OneOf(kParts);
            }
            if (components > 1 || random_() % 5 == 0) {
                pattern += OneOf(kSeparators);
            }
        }
        return pattern;
    }

  private:
    inline static const std::vector<std::string> kNames = {
        "a", "b", "ab", "a.b", ".h", "[x]", "x]", "[", "*", "a b", "A", "aa", "ba", "c"};
    inline static const std::vector<std::string> kParts = {
        "*", "?", "*", "a", "b", "[ab]", "[!a]", ".", "[", "]", "A", "[x]", "c"};
    inline static const std::vector<std::string> kSeparators = {"/", "/", "/", "//", "///"};

    const std::string& OneOf(const std::vector<std::string>& choices) {
        return choices[random_() % choices.size()];
    }

    std::minstd_rand random_;
};

TEST(Glob, MatchesWhatTheSystemMatches) {
    std::size_t matches = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const TempDirectory directory;
        // Deep enough that no pattern leads out of it.
        fs::create_directories(directory / "1/2/3/4");
        const ScopedCurrentDirectory here(directory / "1/2/3/4");
        RandomTree tree(seed);
        tree.Make();
        for (int patterns = 0; patterns < 50; ++patterns) {
            const std::string pattern = tree.Pattern();
            const Paths found = Expand(pattern);
            EXPECT_EQ(found, FoundBySystem(pattern)) << pattern << " in the tree of " << seed;
            matches += found.size();
        }
    }
    EXPECT_GT(matches, 300U);
}

TEST(Glob, PathsKeepTheSlashesOfThePattern) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("a/b/c", "");
    EXPECT_EQ(Expand(".///a///*"), Paths{".///a///b"});
    EXPECT_EQ(Expand("./*///b////c"), Paths{"./a//b//c"});
    EXPECT_EQ(Expand("./*///"), Paths{"./a"});
}

TEST(Glob, PatternsBeginWithOneOfThreeCharacters) {
    EXPECT_TRUE(HasPattern("a*"));
    EXPECT_TRUE(HasPattern("?"));
    EXPECT_TRUE(HasPattern("a[b"));
    EXPECT_FALSE(HasPattern("a]b{c}!~"));
    EXPECT_FALSE(HasPattern(""));
}

TEST(Glob, NothingOnTheWayIsNoMatch) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("file", "");
    EXPECT_EQ(Expand("./missing/*"), Paths{});
    EXPECT_EQ(Expand("./file/*"), Paths{});
    EXPECT_EQ(Expand("./*/x"), Paths{});
    EXPECT_EQ(Expand("./*/" + std::string(300, 'x')), Paths{});
}

}  // namespace
}  // namespace sealkeeper
