#include "inspect/check/game_additions.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "inspect/check/sealed_links.h"
#include "inspect/check/unlisted_files.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;

class GameAdditions : public testing::Test {
  protected:
    GameAdditions() : here_(game_.Path()) {}

    static std::string LineOf(const Addition& addition) {
        std::string line = std::string(AdditionKindText(addition.kind)) + ": " + addition.path;
        line += addition.target.empty() ? "" : " -> " + addition.target;
        return line + (addition.sealedFiles == 0 ? "" : " " + std::to_string(addition.sealedFiles));
    }

    [[nodiscard]] std::vector<std::string> Unlisted(const std::vector<std::string>& listed) const {
        ListedPaths paths(game_ / "");
        for (const std::string& path : listed) {
            paths.Add(path);
        }
        return SortedLinesOf(FindUnlistedFiles(paths));
    }

    static std::vector<std::string> LinesOf(const std::vector<Addition>& additions) {
        std::vector<std::string> lines;
        std::transform(additions.begin(), additions.end(), std::back_inserter(lines), LineOf);
        return lines;
    }

    static std::vector<std::string> SortedLinesOf(const std::vector<Addition>& additions) {
        std::vector<std::string> lines = LinesOf(additions);
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    static std::vector<std::string> LinksTo(const std::vector<std::string>& paths) {
        SealedLinks links;
        for (const std::string& path : paths) {
            links.LookOnTheWayTo(path);
        }
        return LinesOf(links.Additions());
    }

    using Lines = std::vector<std::string>;

    test::TempDirectory game_;
    test::ScopedCurrentDirectory here_;
};

TEST_F(GameAdditions, FilesThatNoCatalogueLists) {
    for (const std::string name : {"a", "data/b", "data/.hidden/c", ".d", "data/deep/er/e"}) {
        game_.WriteFile(name, "");
    }
    fs::create_directory("nothing");
    EXPECT_EQ(
        Unlisted({"a", "data/deep/er/e"}),
        (Lines{"unlisted file: .d", "unlisted file: data/.hidden/c", "unlisted file: data/b"}));
    EXPECT_EQ(Unlisted({"a", "data/b", "data/.hidden/c", ".d", "data/deep/er/e"}), Lines());
}

TEST_F(GameAdditions, LinksAreNotFollowed) {
    game_.WriteFile("data/b", "");
    fs::create_directory_symlink("data", "link");
    fs::create_symlink("gone", "dangling");
    EXPECT_EQ(Unlisted({"data/b"}),
              (Lines{"unlisted link: dangling -> gone", "unlisted link: link -> data"}));
    EXPECT_EQ(Unlisted({"data/b", "link", "dangling"}), Lines());
}

TEST_F(GameAdditions, SpecialFiles) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(Unlisted({}), Lines{"unlisted special file: pipe"});
    EXPECT_EQ(Unlisted({"pipe"}), Lines());
}

TEST_F(GameAdditions, LinksOnTheWayToSealedFiles) {
    game_.WriteFile("real/x", "");
    game_.WriteFile("real/sub/y", "");
    fs::create_directory_symlink("real", "data");
    fs::create_symlink("x", "real/l");
    EXPECT_EQ(LinksTo({"real/x", "real/sub/y"}), Lines());
    EXPECT_EQ(LinksTo({"data/x", "data/sub/y", "real/l", "data/l"}),
              (Lines{"link where sealed: data -> real 3", "link where sealed: data/l -> x 1",
                     "link where sealed: real/l -> x 1"}));
    EXPECT_EQ(LinksTo({"data/x", "data/x"}), Lines{"link where sealed: data -> real 2"});
    EXPECT_EQ(LinksTo({"gone/x", "", "/", "real/x/y"}), Lines());
}

TEST_F(GameAdditions, OfAReportHaveTheSignedFilesAsListed) {
    for (const std::string name : {"base.bin", "base.cer", "runtime.conf", "mod.bin", "mod.cer",
                                   "other.cer", ".hidden.bin"}) {
        game_.WriteFile("Quorvane/Certificates/" + name, "");
    }
    game_.WriteFile("real/a", "");
    fs::create_directory_symlink("real", "data");
    CheckReport report;
    report.catalogues = {{"base.bin", ResultCode::Ok, 1}, {"mod.bin", ResultCode::Ok, 0}};
    report.files = {{"data/a", 0, 0, ResultCode::Ok, false}};
    report.runtimeConfiguration = RuntimeConfigurationVerdict::Good;
    EXPECT_EQ(LinesOf(FindAdditions(report, game_ / "")),
              (Lines{"unlisted file: Quorvane/Certificates/.hidden.bin",
                     "unlisted file: Quorvane/Certificates/other.cer", "unlisted file: real/a",
                     "link where sealed: data -> real 1"}));
}

TEST_F(GameAdditions, RuntimeConfigurationThatWasNotRead) {
    CheckReport report;
    report.catalogues = {{"mod.bin", ResultCode::Ok, 0}};
    report.runtimeConfiguration = RuntimeConfigurationVerdict::NotRead;
    EXPECT_EQ(LinesOf(FindAdditions(report, game_ / "")), Lines());
    report.catalogues.push_back({"base.bin", ResultCode::Ok, 0});
    EXPECT_EQ(LinesOf(FindAdditions(report, game_ / "")),
              Lines{"missing runtime.conf: Quorvane/Certificates/runtime.conf"});
    fs::create_directories("Quorvane/Certificates/runtime.conf");
    const std::vector<Addition> additions = FindAdditions(report, game_ / "");
    EXPECT_EQ(LinesOf(additions),
              Lines{"unreadable runtime.conf: Quorvane/Certificates/runtime.conf"});
    EXPECT_EQ(additions.at(0).reason, "it is a directory");
}

}  // namespace
}  // namespace sealkeeper
