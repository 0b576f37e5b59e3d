#include "inspect/report/code_text.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

TEST(CodeText, IsTheNumberAndTheName) {
    EXPECT_EQ(CodeText(ResultCode::Ok), "0 (Ok)");
    EXPECT_EQ(CodeText(ResultCode::CertificateCNMismatch),
              "31 (CertificateCNMismatch - check ProductId)");
}

TEST(CodeText, PutsTheMissingKeyIntoWords) {
    EXPECT_EQ(CodeText(kPrivateKeyFileMissing), "35 (the private key is missing)");
}

}  // namespace
}  // namespace sealkeeper
