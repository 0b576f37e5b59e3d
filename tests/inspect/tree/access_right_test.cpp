#include "inspect/tree/access_right.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "inspect/rules/failing_path.h"
#include "support/quiet_log.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

struct Answer {
    ResultCode code;
    bool isForbidden;

    bool operator==(const Answer&) const = default;
};

class AccessRight : public testing::Test {
  protected:
    AccessRight() { directory_.WriteFile("a", "1"); }

    // Where the system fails with `systemError`.
    [[nodiscard]] Answer AnswerTo(int systemError) const {
        const std::string path = directory_ / "a";
        const test::ScopedFailingPath failing(test::PathCall::Access, path, systemError);
        Answer answer{ResultCode::Ok, false};
        answer.code = AskForRight(path, R_OK, answer.isForbidden);
        return answer;
    }

    test::TempDirectory directory_;

  private:
    const test::QuietLog quiet_;
};

TEST_F(AccessRight, IsThereOrIsLackedOnlyWhereSomethingIs) {
    bool isForbidden = true;
    EXPECT_EQ(AskForRight(directory_ / "a", R_OK, isForbidden), ResultCode::Ok);
    EXPECT_FALSE(isForbidden);
    isForbidden = true;
    EXPECT_EQ(AskForRight(directory_ / "gone", R_OK, isForbidden), ResultCode::Ok);
    EXPECT_FALSE(isForbidden);
}

TEST_F(AccessRight, IsLackedByTheErrorsThatSaySo) {
    EXPECT_EQ(AnswerTo(EACCES), (Answer{ResultCode::Ok, true}));
    EXPECT_EQ(AnswerTo(EPERM), (Answer{ResultCode::Ok, true}));
    EXPECT_EQ(AnswerTo(ENOENT), (Answer{ResultCode::Ok, false}));
}

TEST_F(AccessRight, IsUnknownWhereTheSystemFails) {
    EXPECT_EQ(AnswerTo(EIO).code, ResultCode::SealkeeperIOError);
}

}  // namespace
}  // namespace sealkeeper
