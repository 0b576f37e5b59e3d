#include "inspect/rules/what_is_read.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <vector>

#include "inspect/rules/failing_path.h"
#include "support/quiet_log.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

class WhatIsRead : public testing::Test {
  protected:
    [[nodiscard]] static std::vector<bool> LockedOf(const Selection& selection) {
        std::vector<bool> locked;
        for (const SelectedFile& file : selection.files) {
            locked.push_back(file.isLocked);
        }
        return locked;
    }

    const test::QuietLog quiet_;
    test::TempDirectory game_;
    test::ScopedCurrentDirectory inGame_{game_.Path()};
};

TEST_F(WhatIsRead, IsLockedWhereThisUserMayNotReadIt) {
    Selection selection;
    selection.files = {{"./open", 1}, {"./closed", 1}, {"./gone", 1}};
    game_.WriteFile("open", "1");
    game_.WriteFile("closed", "1");
    const test::ScopedFailingPath forbidden(test::PathCall::Access, "./closed", EACCES);
    EXPECT_EQ(LookAtWhatIsRead(selection), ResultCode::Ok);
    EXPECT_EQ(LockedOf(selection), (std::vector<bool>{false, true, false}));
}

TEST_F(WhatIsRead, IsRegularFilesWhoseNamesAreUtf8) {
    for (const SelectedFile& file :
         {SelectedFile{"./x", 0, FileType::Fifo}, SelectedFile{"./x", 0, FileType::Missing},
          SelectedFile{"./\xFF", 1, FileType::Regular}}) {
        Selection selection;
        selection.files = {file};
        const test::ScopedFailingPath failing(test::PathCall::Access, file.path);
        EXPECT_EQ(LookAtWhatIsRead(selection), ResultCode::Ok) << file.path;
        EXPECT_FALSE(selection.files[0].isLocked) << file.path;
    }
    Selection selection;
    selection.files = {{"./x", 1}};
    const test::ScopedFailingPath failing(test::PathCall::Access, "./x");
    EXPECT_EQ(LookAtWhatIsRead(selection), ResultCode::SealkeeperIOError);
}

TEST_F(WhatIsRead, IsTheStandInOfNamesThatAreNotUtf8) {
    game_.WriteFile("U82W_ERROR/x", "1");
    Selection selection;
    selection.files = {{"./a", 1}};
    EXPECT_EQ(LookAtWhatIsRead(selection), ResultCode::Ok);
    EXPECT_EQ(selection.standIn.type, FileType::Missing) << "not looked at";
    selection.files.push_back({"./\xFF", 1});
    EXPECT_EQ(LookAtWhatIsRead(selection), ResultCode::Ok);
    EXPECT_EQ(selection.standIn.type, FileType::Directory);
    EXPECT_EQ(selection.standIn.refusal.value_or(Refusal()).code, ResultCode::CatalogueIOError);
}

}  // namespace
}  // namespace sealkeeper
