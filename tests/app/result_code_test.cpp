#include "app/result_code.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace sealkeeper {
namespace {

const std::vector<std::pair<int, std::string>>& ExpectedTexts() {
    static const std::vector<std::pair<int, std::string>> texts = {
        {0, "Ok"},
        {1, "SealkeeperUsageError"},
        {2, "SealkeeperHashtoolGenericError"},
        {3, "SealkeeperIOError"},
        {4, "InitFailedConfig"},
        {5, "InitFailedWorkingDirectory"},
        {6, "InitFailedTargetDirectory"},
        {7, "CatalogueError"},
        {8, "CatalogueIOError"},
        {9, "FileInvalid"},
        {10, "CatalogueFileVersionUnsupported"},
        {11, "MbedTlsGenericError"},
        {12, "MbedTlsRandNumGenError"},
        {13, "MbedTlsFileIOError"},
        {14, "MbedTlsKeyVersionError"},
        {15, "MbedTlsKeyFormatError"},
        {16, "MbedTlsKeyPasswordError"},
        {17, "MbedTlsKeyInvalidPubkey"},
        {18, "MbedTlsSigLenMismatch"},
        {19, "MbedTlsX509VersionError"},
        {20, "MbedTlsX509FormatError"},
        {21, "MbedTlsX509SigMismatch"},
        {22, "MbedTlsX509VerifyFailed"},
        {23, "FileVerificationIOError"},
        {24, "FileVerificationSizeMismatch"},
        {25, "FileVerificationHashingError"},
        {26, "FileVerificationHashMismatch"},
        {27, "CertIOError"},
        {28, "Aborted"},
        {29, "Unvalidated"},
        {30, "CertificateExpired - check certificate"},
        {31, "CertificateCNMismatch - check ProductId"},
        {32, "CertificateRevoked - check certificate"},
        {33, "CertificateRLInvalid - check CRL"},
        {34, "CertificateRLExpired - check CRL"},
    };
    return texts;
}

TEST(ResultCode, TextOfEveryCode) {
    for (const auto& [number, text] : ExpectedTexts()) {
        EXPECT_EQ(ResultCodeText(static_cast<ResultCode>(number)), text) << number;
    }
}

TEST(ResultCode, FailureTextOfEveryFailure) {
    for (const auto& [number, text] : ExpectedTexts()) {
        if (number != 0) {
            EXPECT_EQ(ResultFailureText(static_cast<ResultCode>(number)), text) << number;
        }
    }
}

TEST(ResultCode, FailureTextOfOkIsUnavailable) {
    EXPECT_STREQ(ResultFailureText(ResultCode::Ok), "Description unavailable");
}

TEST(ResultCode, CodesOutsideTheTableHaveNoText) {
    for (const unsigned number : {35U, 36U, 0xFFFFFFFFU}) {
        EXPECT_STREQ(ResultCodeText(static_cast<ResultCode>(number)), "Description unavailable");
        EXPECT_STREQ(ResultFailureText(static_cast<ResultCode>(number)), "Description unavailable");
    }
}

TEST(ResultCode, MissingPrivateKeyFileIs35) {
    EXPECT_EQ(ResultCodeNumber(kPrivateKeyFileMissing), 35);
}

TEST(ResultCode, FailedAssertionShowsTextAndNumber) {
    EXPECT_EQ(testing::PrintToString(ResultCode::CatalogueError), "CatalogueError (7)");
    EXPECT_EQ(testing::PrintToString(kPrivateKeyFileMissing), "Description unavailable (35)");
}

}  // namespace
}  // namespace sealkeeper
