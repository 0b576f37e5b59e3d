#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fault/fault_injection.h"
#include "runtime/certificate_trust.h"
#include "runtime/signing_test_support.h"
#include "runtime/trust_material.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::CertificateBytes;
using test::kTestProductId;
using test::ScopedFault;
using Reach = ScopedFault::Reach;

using Bytes = std::vector<std::uint8_t>;

// The library's own codes count, so a system failure is no verdict.
constexpr ResultCode kLibraryFailure = ResultCode::MbedTlsGenericError;

bool IsEmpty(const Certificate& certificate) {
    return certificate.Get()->raw.p == nullptr && certificate.Get()->raw.len == 0;
}

struct Attempt {
    ResultCode code;
    bool isEmpty;
};

// Verifies the certificate of `kind` while call number `failing` fails.
Attempt VerifyWithFault(Call call, std::size_t failing, const std::string& kind,
                        const Bytes& parent) {
    const Bytes subject = CertificateBytes(kind);
    Certificate certificate;
    const ScopedFault fault(call, failing, Reach::Once, MBEDTLS_ERR_X509_FATAL_ERROR);
    const ResultCode code = VerifySigningCertificate(BuiltInTrustMaterial(), kTestProductId,
                                                     subject, parent, {}, certificate);
    EXPECT_TRUE(fault.Struck()) << failing;
    return {code, IsEmpty(certificate)};
}

void ExpectRefused(const Attempt& attempt, std::size_t failing) {
    EXPECT_EQ(attempt.code, kLibraryFailure) << failing;
    EXPECT_TRUE(attempt.isEmpty) << failing;
}

TEST(CertificateTrustFaults, NothingIsLeftOfWhatFailedToBeParsed) {
    const Bytes good = CertificateBytes("good");
    Certificate certificate;
    const ScopedFault fault(Call::ParseCertificate);
    EXPECT_EQ(ParseCertificate(good, certificate), MBEDTLS_ERR_X509_ALLOC_FAILED);
    EXPECT_TRUE(IsEmpty(certificate));
}

// The certificate and the authority are parsed, then the chain is checked.
TEST(CertificateTrustFaults, EveryStepOfTheDirectAttemptMayFail) {
    for (const std::size_t failing : {0U, 1U}) {
        ExpectRefused(VerifyWithFault(Call::ParseCertificate, failing, "good", {}), failing);
    }
    ExpectRefused(VerifyWithFault(Call::VerifyChain, 0, "good", {}), 0);
}

// The direct attempt fails for a mod in any case. After it the parent, the authority, the mod and
// the parent again are parsed.
TEST(CertificateTrustFaults, EveryStepOfTheAttemptsWithAParentMayFail) {
    const Bytes parent = CertificateBytes("good");
    for (const std::size_t failing : {2U, 3U, 4U, 5U}) {
        ExpectRefused(VerifyWithFault(Call::ParseCertificate, failing, "mod", parent), failing);
    }
    for (const std::size_t failing : {1U, 2U}) {
        ExpectRefused(VerifyWithFault(Call::VerifyChain, failing, "mod", parent), failing);
    }
}

TEST(CertificateTrustFaults, CheckThatFailsIsNoTrust) {
    Certificate certificate;
    ASSERT_EQ(ParseCertificate(CertificateBytes("good"), certificate), 0);
    const TrustMaterial trust = BuiltInTrustMaterial();
    {
        CapturedOutput output;
        const ScopedFault fault(Call::ParseCertificate);
        EXPECT_FALSE(CheckCertificateTrust(trust, certificate, kTestProductId));
        // -0x2880 as an unsigned 32-bit number: out of memory.
        EXPECT_EQ(output.Take(), "[Err!] Parsing embedded CA certificate failed with FFFFD780\n");
    }
    CapturedOutput output;
    const ScopedFault fault(Call::VerifyChain, 0, Reach::Onwards, MBEDTLS_ERR_X509_FATAL_ERROR);
    EXPECT_FALSE(CheckCertificateTrust(trust, certificate, kTestProductId));
    EXPECT_EQ(output.Take(),
              "[Err!] Failed to verify the certificate for product ID: TestProduct42\n");
}

TEST(CertificateTrustFaults, IssuerIsNotTakenForAnotherWithoutTheAuthority) {
    Certificate certificate;
    ASSERT_EQ(ParseCertificate(CertificateBytes("mod"), certificate), 0);
    const ScopedFault fault(Call::ParseCertificate);
    EXPECT_FALSE(IsFromAnotherIssuer(BuiltInTrustMaterial(), certificate));
}

}  // namespace
}  // namespace sealkeeper
