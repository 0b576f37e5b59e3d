#include "inspect/check/link_target.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::TempDirectory;

TEST(LinkTarget, IsReadWhereverItLeads) {
    const TempDirectory directory;
    std::filesystem::create_symlink("../elsewhere", directory / "link");
    Addition link{AdditionKind::UnlistedLink, directory / "link", {}, 0, {}};
    ReadTarget(link);
    EXPECT_EQ(link.target, "../elsewhere");
    EXPECT_EQ(link.reason, "");
}

TEST(LinkTarget, HasAReasonWhereItCannotBeRead) {
    const TempDirectory directory;
    Addition link{AdditionKind::UnlistedLink, directory / "link", {}, 0, {}};
    ReadTarget(link);
    EXPECT_EQ(link.target, "");
    EXPECT_EQ(link.reason, "its target cannot be read: No such file or directory");
}

}  // namespace
}  // namespace sealkeeper
