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
        return CatalogueFailureText({code, "c/mod.bin", true, "Product", loggedCause});
    }

    test::TempDirectory game_;
    test::ScopedCurrentDirectory here_;
};

TEST_F(CatalogueFailureTest, CodesThatSayTheCause) {
    EXPECT_EQ(TextOf(ResultCode::FileInvalid),
              "'c/mod.bin': 9 (FileInvalid): it is damaged or cut off, or no catalogue");
    EXPECT_EQ(
        TextOf(ResultCode::CertificateCNMismatch),
        "'c/mod.bin': 31 (CertificateCNMismatch - check ProductId): the certificate beside it is of "
        "another product id than 'Product'");
    EXPECT_EQ(TextOf(ResultCode::Aborted), "'c/mod.bin': 28 (Aborted): it cannot be used");
}

TEST_F(CatalogueFailureTest, NameThatIsNoUtf8) {
    EXPECT_EQ(
        CatalogueFailureText({ResultCode::CatalogueError, "c/?", false, "Product", "Logged."}),
        "'c/?': 7 (CatalogueError): its name is not UTF-8");
}

TEST_F(CatalogueFailureTest, LoggedCauseIsTakenWhereThereIsOne) {
    EXPECT_EQ(TextOf(ResultCode::CatalogueError, "Not enough memory for the catalogue."),
              "'c/mod.bin': 7 (CatalogueError): Not enough memory for the catalogue");
}

TEST_F(CatalogueFailureTest, ReasonOfTheSystem) {
    EXPECT_EQ(TextOf(ResultCode::CatalogueIOError),
              "'c/mod.bin': 8 (CatalogueIOError): it cannot be read: No such file or directory");
    std::filesystem::create_directories("c/mod.bin");
    EXPECT_EQ(TextOf(ResultCode::CatalogueIOError),
              "'c/mod.bin': 8 (CatalogueIOError): it cannot be read: it is a directory");
    EXPECT_EQ(TextOf(ResultCode::CertIOError),
              "'c/mod.bin': 27 (CertIOError): the certificate beside it cannot be read: No such "
              "file or directory");
    game_.WriteFile("c/mod.cer", "");
    EXPECT_EQ(
        TextOf(ResultCode::CertIOError),
        "'c/mod.bin': 27 (CertIOError): the certificate beside it cannot be read: the system failed "
        "to read it");
}

}  // namespace
}  // namespace sealkeeper
