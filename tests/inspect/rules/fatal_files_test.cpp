#include "inspect/rules/fatal_files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "support/quiet_log.h"

namespace sealkeeper {
namespace {

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

SelectedFile Locked(const std::string& path, std::uint64_t sizeBytes) {
    return {path, sizeBytes, FileType::Regular, true};
}

TEST(ForbiddenFiles, HaveContentThatThisUserMayNotRead) {
    EXPECT_TRUE(IsForbidden(Locked("./closed", 1)));
    EXPECT_FALSE(IsForbidden(Locked("./closed", 0))) << "nothing is read of an empty one";
    EXPECT_TRUE(IsForbiddenButEmpty(Locked("./closed", 0)));
    EXPECT_FALSE(IsForbiddenButEmpty(Locked("./closed", 1)));
    EXPECT_FALSE(IsForbidden({"./open", 1}));
    EXPECT_FALSE(IsForbiddenButEmpty({"./open"}));
    Selection selection;
    selection.files = {Locked("./closed", 1)};
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

TEST(FatalFiles, MayBeWhatIsReadInPlaceOfNamesThatAreNotUtf8) {
    Selection selection;
    selection.files = {{"./\xFF", 1}};
    EXPECT_EQ(FindFatalFile(selection), std::nullopt) << "missing";
    selection.standIn.refusal = Refusal{ResultCode::CatalogueIOError, "is a directory"};
    EXPECT_EQ(FindFatalFile(selection).value_or(Refusal()).code, ResultCode::CatalogueIOError);
    selection.files = {{"./a", 1}};
    EXPECT_EQ(FindFatalFile(selection), std::nullopt) << "not read";
}

}  // namespace
}  // namespace sealkeeper
