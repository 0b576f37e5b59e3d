#include <gtest/gtest.h>

#include <cerrno>

#include <string>

#include "catalogue/hashing/game_file_index.h"
#include "fault/fault_injection.h"
#include "platform/text_encoding.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;
using test::TempDirectory;

class GameFileIndexFaults : public testing::Test {
  protected:
    GameFileIndexFaults() {
        root_.WriteFile("A", "");
        root_.WriteFile("sub/B", "");
        root_.WriteFile("sub/deep/C", "");
    }

    [[nodiscard]] bool Build() { return BuildGameFileIndex(index_, Utf8ToWide(root_.Path())); }

    TempDirectory root_;
    GameFileIndex index_;
};

TEST_F(GameFileIndexFaults, RootThatCannotBeOpened) {
    const ScopedFault fault(Call::Opendir, 0, ScopedFault::Reach::Onwards, EACCES);
    EXPECT_FALSE(Build());
    EXPECT_TRUE(index_.paths.empty());
    EXPECT_TRUE(index_.errorText.empty());
}

TEST_F(GameFileIndexFaults, DirectoryThatCannotBeOpenedIsLeftOut) {
    const ScopedFault fault(Call::Opendir, 1, ScopedFault::Reach::Once, EACCES);
    EXPECT_TRUE(Build());
    EXPECT_TRUE(fault.Struck());
    EXPECT_EQ(index_.paths.size(), 1U);
    EXPECT_EQ(index_.paths.at(L"a"), Utf8ToWide(root_ / "A"));
    EXPECT_TRUE(index_.errorText.empty());
}

TEST_F(GameFileIndexFaults, FilesAroundADirectoryThatCannotBeOpenedAreEntered) {
    const ScopedFault fault(Call::Opendir, 2, ScopedFault::Reach::Once, EACCES);
    EXPECT_TRUE(Build());
    EXPECT_EQ(index_.paths.size(), 2U);
    EXPECT_EQ(index_.paths.count(L"sub/b"), 1U);
}

TEST_F(GameFileIndexFaults, SystemThatFailsToReadADirectoryEndsTheWalk) {
    const ScopedFault fault(Call::Readdir, 1, ScopedFault::Reach::Once, EIO);
    const test::CapturedOutput quiet;
    EXPECT_FALSE(Build());
    EXPECT_FALSE(index_.errorText.empty());
    EXPECT_TRUE(fault.Struck());
}

}  // namespace
}  // namespace sealkeeper
