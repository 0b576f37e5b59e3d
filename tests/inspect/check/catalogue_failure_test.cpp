#include "inspect/check/catalogue_failure.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

class CatalogueFailureTest : public testing::Test {
  protected:
    CatalogueFailureTest() : here_(game_.Path()) {}

    static std::string TextOf(ResultCode code, const std::string& loggedCause = "") {
        return CatalogueFailureText({code, "c/mod.bin", "Product", loggedCause});
    }

    test::TempDirectory game_;
    test::ScopedCurrentDirectory here_;
};

TEST_F(CatalogueFailureTest, CodesThatSayTheCause) {
    EXPECT_EQ(TextOf(ResultCode::FileInvalid),
              "'c/mod.bin': it is damaged or cut off, or no catalogue (9 FileInvalid)");
    EXPECT_EQ(TextOf(ResultCode::CertificateCNMismatch),
              "'c/mod.bin': the certificate beside it is of another product id than 'Product' "
              "(31 CertificateCNMismatch - check ProductId)");
    EXPECT_EQ(TextOf(ResultCode::CatalogueError),
              "'c/mod.bin': its name is not UTF-8 (7 CatalogueError)");
    EXPECT_EQ(TextOf(ResultCode::Aborted), "'c/mod.bin': it cannot be used (28 Aborted)");
}

TEST_F(CatalogueFailureTest, LoggedCauseGoesFirst) {
    EXPECT_EQ(TextOf(ResultCode::CatalogueError, "Not enough memory for the catalogue."),
              "'c/mod.bin': Not enough memory for the catalogue (7 CatalogueError)");
}

TEST_F(CatalogueFailureTest, ReasonOfTheSystem) {
    EXPECT_EQ(TextOf(ResultCode::CatalogueIOError),
              "'c/mod.bin': it cannot be read: No such file or directory (8 CatalogueIOError)");
    std::filesystem::create_directories("c/mod.bin");
    EXPECT_EQ(TextOf(ResultCode::CatalogueIOError),
              "'c/mod.bin': it cannot be read: it is a directory (8 CatalogueIOError)");
    EXPECT_EQ(TextOf(ResultCode::CertIOError),
              "'c/mod.bin': the certificate beside it cannot be read: No such file or directory "
              "(27 CertIOError)");
    game_.WriteFile("c/mod.cer", "");
    EXPECT_EQ(TextOf(ResultCode::CertIOError),
              "'c/mod.bin': the certificate beside it cannot be read: the system failed to read it "
              "(27 CertIOError)");
}

}  // namespace
}  // namespace sealkeeper
