#include "inspect/x509/certificate_refusal.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace sealkeeper {
namespace {

TEST(CertificateRefusal, NamesTheCertificateAsItIsGiven) {
    const std::vector<std::pair<ResultCode, std::string>> verdicts = {
        {ResultCode::MbedTlsX509VersionError,
         "is of a version or signed in a way that is not known"},
        {ResultCode::MbedTlsX509FormatError, "is damaged, or not in the form that is needed (DER)"},
        {ResultCode::MbedTlsX509SigMismatch, "was changed"},
        {ResultCode::MbedTlsX509VerifyFailed,
         "was not issued by the trusted authority itself, but is, for example, a mod's own"},
        {ResultCode::CertificateExpired, "has expired"},
        {ResultCode::CertificateCNMismatch, "names another product id"},
        {ResultCode::CertificateRevoked, "was revoked"},
    };
    for (const auto& [code, verdict] : verdicts) {
        EXPECT_EQ(CertificateRefusal(code, "the certificate"), "the certificate " + verdict);
        EXPECT_EQ(CertificateRefusal(code, "'a.cer'"), "'a.cer' " + verdict);
    }
}

TEST(CertificateRefusal, OfTheListSaysNothingOfTheCertificate) {
    EXPECT_EQ(CertificateRefusal(ResultCode::CertificateRLInvalid, "the certificate"),
              "the built-in revocation list cannot be used");
    EXPECT_EQ(CertificateRefusal(ResultCode::CertificateRLExpired, "the certificate"),
              "the built-in revocation list has expired");
}

TEST(CertificateRefusal, IsEmptyForOtherCodes) {
    for (const ResultCode code :
         {ResultCode::Ok, ResultCode::CertIOError, ResultCode::MbedTlsGenericError}) {
        EXPECT_EQ(CertificateRefusal(code, "the certificate"), "") << ResultCodeNumber(code);
    }
}

}  // namespace
}  // namespace sealkeeper
