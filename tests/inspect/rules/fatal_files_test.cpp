#include "inspect/rules/fatal_files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/quiet_log.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;

TEST(TooLongPaths, AreCountedInUnitsOfUtf16) {
    EXPECT_FALSE(IsTooLong({"./" + std::string(255, 'x')})) << "the './' is not stored";
    EXPECT_TRUE(IsTooLong({"./" + std::string(256, 'x')}));
    std::string twoBytesEach;
    std::string twoUnitsEach;
    for (int i = 0; i < 128; ++i) {
        twoBytesEach += "\u00e4";
        twoUnitsEach += "\U0001F3AE";
    }
    EXPECT_FALSE(IsTooLong({"./" + twoBytesEach}));
    EXPECT_TRUE(IsTooLong({"./" + twoUnitsEach}));
}

TEST(FatalFiles, AreNoneInAGoodSelection) {
    Selection selection;
    EXPECT_EQ(FindFatalFile(selection), std::nullopt);
    selection.files = {{"./missing", 1}, {"./" + std::string(255, 'x')}};
    EXPECT_EQ(FindFatalFile(selection), std::nullopt);
}

TEST(FatalFiles, AreToldByTheFirstThatIsRead) {
    Selection selection;
    const std::string first(256, 'x');
    selection.files = {{"./a"}, {"./" + std::string(256, 'y')}, {"./" + first}};
    const auto refusal = FindFatalFile(selection);
    ASSERT_TRUE(refusal.has_value());
    EXPECT_EQ(refusal->code, ResultCode::CatalogueError);
    EXPECT_EQ(refusal->message, "Path too long for the catalogue: './" + first + "'.");
}

TEST(ForbiddenFiles, HaveContentThatThisUserMayNotRead) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    const test::TempDirectory game;
    const test::ScopedCurrentDirectory inGame(game.Path());
    game.WriteFile("closed", "1");
    game.WriteFile("open", "1");
    fs::permissions("closed", fs::perms::none);
    EXPECT_TRUE(IsForbidden({"./closed", 1}));
    EXPECT_FALSE(IsForbidden({"./closed", 0})) << "nothing is read of an empty one";
    EXPECT_TRUE(IsForbiddenButEmpty({"./closed", 0}));
    EXPECT_FALSE(IsForbiddenButEmpty({"./closed", 1}));
    EXPECT_FALSE(IsForbidden({"./closed", 1, FileType::Fifo})) << "only regular files are read";
    EXPECT_FALSE(IsForbidden({"./open", 1}));
    EXPECT_FALSE(IsForbidden({"./missing", 1}));
    Selection selection;
    selection.files = {{"./closed", 1}};
    EXPECT_EQ(FindFatalFile(selection).value_or(Refusal()).message,
              "'./closed' cannot be read by this user.");
}

TEST(FatalFiles, PathsMayBeTooLongByTheirAlias) {
    const test::QuietLog quiet;
    Selection selection;
    selection.config.pathAliases = {{"bin", "data"}};
    selection.files = {{"./bin/" + std::string(122, 'x')}};
    EXPECT_EQ(FindFatalFile(selection), std::nullopt) << "127 characters of four bytes";
    selection.files = {{"./bin/" + std::string(123, 'x')}};
    EXPECT_EQ(FindFatalFile(selection).value_or(Refusal()).code, ResultCode::CatalogueError);
    selection.files = {{"./lib/" + std::string(123, 'x')}};
    EXPECT_EQ(FindFatalFile(selection), std::nullopt) << "no alias is in it";
}

TEST(FatalFiles, MayBeWhatIsReadInPlaceOfNamesThatAreNoUtf8) {
    const test::TempDirectory game;
    const test::ScopedCurrentDirectory inGame(game.Path());
    Selection selection;
    selection.files = {{"./\xFF", 1}};
    EXPECT_EQ(FindFatalFile(selection), std::nullopt) << "missing";
    game.WriteFile("U82W_ERROR/x", "1");
    EXPECT_EQ(FindFatalFile(selection).value_or(Refusal()).code, ResultCode::CatalogueIOError);
    selection.files = {{"./a", 1}};
    EXPECT_EQ(FindFatalFile(selection), std::nullopt) << "not read";
}

}  // namespace
}  // namespace sealkeeper
