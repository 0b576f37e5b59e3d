// Rules where the system fails to look at a path.
#include "inspect/rules/failing_path.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "inspect/rules/rules_run.h"
#include "support/quiet_log.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::PathCall;

class FailingPath : public testing::Test {
  protected:
    FailingPath() {
        directory_.WriteFile("game/a", "1");
        directory_.WriteFile("game/d/b", "1");
        directory_.WriteFile("beside/x", "1");
        fs::create_symlink("../beside", directory_ / "game/out");
    }

    // The error with which a report on include patterns ends; empty if there is a report.
    [[nodiscard]] std::string ErrorWith(const std::string& patterns) const {
        const test::ScopedCurrentDirectory inGame(directory_ / "game");
        const std::string text =
            "config_info { version = 2; }\nsearch_options { include_paths = [" + patterns + "] }\n";
        RulesReport report;
        ForgetLoggedError();
        const ResultCode code =
            RunRules({{"game.cfg", text}, fs::canonical(".").string(), "base"}, report);
        EXPECT_EQ(code == ResultCode::Ok, LastLoggedError().empty());
        return code == ResultCode::SealkeeperIOError ? LastLoggedError() : "";
    }

    test::TempDirectory directory_;

  private:
    const test::QuietLog quiet_;
};

std::string CouldNotLookAt(const std::string& path) {
    return "Could not look at '" + path + "': Input/output error.";
}

TEST_F(FailingPath, EndsRulesAtASelectedFile) {
    EXPECT_EQ(ErrorWith(R"("a")"), "");
    const test::ScopedFailingPath failing(PathCall::Access, "./a");
    EXPECT_EQ(ErrorWith(R"("a")"), CouldNotLookAt("./a"));
}

TEST_F(FailingPath, EndsRulesWhereTheStandInIsLookedAt) {
    const test::ScopedFailingPath failing(PathCall::Stat, "U82W_ERROR");
    EXPECT_EQ(ErrorWith(R"("a")"), "") << "all names are UTF-8";
    directory_.WriteFile("game/d/\xFF", "1");
    EXPECT_EQ(ErrorWith(R"("d")"), CouldNotLookAt("U82W_ERROR"));
}

TEST_F(FailingPath, EndsRulesWhereTheRightToTheStandInIsAsked) {
    directory_.WriteFile("game/d/\xFF", "1");
    directory_.WriteFile("game/U82W_ERROR", "1");
    EXPECT_EQ(ErrorWith(R"("d")"), "");
    const test::ScopedFailingPath failing(PathCall::Access, "U82W_ERROR");
    EXPECT_EQ(ErrorWith(R"("d")"), CouldNotLookAt("U82W_ERROR"));
}

TEST_F(FailingPath, EndsRulesAtADirectoryOnTheWayOfAPattern) {
    for (const PathCall call : {PathCall::Access, PathCall::Stat}) {
        const test::ScopedFailingPath failing(call, "d");
        EXPECT_EQ(ErrorWith(R"("a", "d/gone")"), CouldNotLookAt("d"));
        EXPECT_EQ(ErrorWith(R"("d/gone")"), CouldNotLookAt("d")) << "all the patterns";
    }
}

TEST_F(FailingPath, EndsRulesOnAWayOutOfTheGame) {
    EXPECT_EQ(ErrorWith(R"("a", "out/x")"), "");
    for (const char* const path : {"out/x", "out"}) {
        const test::ScopedFailingPath failing(PathCall::RealPath, path);
        EXPECT_EQ(ErrorWith(R"("a", "out/x")"), CouldNotLookAt(path));
    }
}

TEST_F(FailingPath, EndsRulesAtTheGameItself) {
    const test::ScopedFailingPath failing(PathCall::RealPath, ".");
    EXPECT_EQ(ErrorWith(R"("a")"), CouldNotLookAt("."));
}

}  // namespace
}  // namespace sealkeeper
