#include "runtime/certificate_trust.h"

#include <algorithm>
#include <utility>

#include "app/console_log.h"
#include "platform/file_io.h"
#include "runtime/mbedtls_result.h"

namespace sealkeeper {
namespace {

constexpr const char* kNoExpectedName = nullptr;

// Hundreds of times the size of a usual certificate.
constexpr std::uint64_t kMaxCertificateBytes = 1'048'576;

struct TrustAnchor {
    ByteView certificateDer;
    // May be empty: then nothing is revoked.
    ByteView revocationListDer;
};

struct VerificationResult {
    int libraryResult = 0;
    std::uint32_t flags = 0;

    [[nodiscard]] bool Succeeded() const { return libraryResult == 0; }
    [[nodiscard]] ResultCode Code() const { return MapX509Error(libraryResult, flags); }
};

VerificationResult VerifyChain(Certificate& subject, Certificate& anchor, RevocationList& revoked,
                               const char* expectedName) {
    VerificationResult result;
    result.libraryResult = mbedtls_x509_crt_verify(subject.Get(), anchor.Get(), revoked.Get(),
                                                   expectedName, &result.flags, nullptr, nullptr);
    return result;
}

// One attempt. `subject` is left parsed on success and empty on failure.
VerificationResult VerifyAgainst(const TrustAnchor& trusted, ByteView subjectBytes,
                                 const char* expectedName, Certificate& subject) {
    VerificationResult result;
    Certificate anchor;
    RevocationList revoked;
    result.libraryResult = ParseCertificate(subjectBytes, subject);
    if (result.Succeeded()) {
        result.libraryResult = ParseCertificate(trusted.certificateDer, anchor);
    }
    if (result.Succeeded() && !trusted.revocationListDer.empty()) {
        result.libraryResult = ParseRevocationList(trusted.revocationListDer, revoked);
    }
    if (result.Succeeded()) {
        result = VerifyChain(subject, anchor, revoked, expectedName);
    }
    if (!result.Succeeded()) {
        subject.Reset();
    }
    return result;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> ReadCertificateBytes(const std::string& path) {
    auto start = ReadFileStart(path, kMaxCertificateBytes);
    if (!start) {
        return std::nullopt;
    }
    return std::move(start->bytes);
}

int ParseCertificate(ByteView bytes, Certificate& certificate) {
    // The library appends to what the object already holds.
    certificate.Reset();
    const int result = mbedtls_x509_crt_parse_der(certificate.Get(), bytes.data(), bytes.size());
    if (result != 0) {
        certificate.Reset();
    }
    return result;
}

int ParseRevocationList(ByteView bytes, RevocationList& list) {
    list.Reset();
    const int result = mbedtls_x509_crl_parse_der(list.Get(), bytes.data(), bytes.size());
    if (result != 0) {
        list.Reset();
    }
    return result;
}

ResultCode VerifySigningCertificate(const TrustMaterial& trust, const std::string& productId,
                                    ByteView certificateBytes, ByteView parentBytes,
                                    ByteView parentCrlBytes, Certificate& certificate) {
    const TrustAnchor authority{trust.authorityDer, trust.revocationListDer};
    const VerificationResult direct =
        VerifyAgainst(authority, certificateBytes, productId.c_str(), certificate);
    if (direct.Succeeded() || parentBytes.empty()) {
        return direct.Code();
    }

    Certificate parent;
    const VerificationResult parentResult =
        VerifyAgainst(authority, parentBytes, productId.c_str(), parent);
    if (!parentResult.Succeeded()) {
        return parentResult.Code();
    }
    return VerifyAgainst({parentBytes, parentCrlBytes}, certificateBytes, kNoExpectedName,
                         certificate)
        .Code();
}

bool CheckCertificateTrust(const TrustMaterial& trust, Certificate& certificate,
                           const std::string& productId) {
    Certificate authority;
    if (const int error = ParseCertificate(trust.authorityDer, authority); error != 0) {
        Log(LogLevel::Error, "Parsing embedded CA certificate failed with %X\n",
            static_cast<unsigned>(error));
        return false;
    }
    RevocationList revoked;
    if (const int error = ParseRevocationList(trust.revocationListDer, revoked); error != 0) {
        Log(LogLevel::Error, "Parsing embedded CRL failed with %X\n", static_cast<unsigned>(error));
        return false;
    }
    if (!VerifyChain(certificate, authority, revoked, productId.c_str()).Succeeded()) {
        Log(LogLevel::Error, "Failed to verify the certificate for product ID: %s\n",
            productId.c_str());
        return false;
    }
    Log(LogLevel::Info, "Successfully verified the certificate for product ID: %s\n",
        productId.c_str());
    return true;
}

bool IsFromAnotherIssuer(const TrustMaterial& trust, Certificate& certificate) {
    Certificate authority;
    if (ParseCertificate(trust.authorityDer, authority) != 0) {
        return false;
    }
    const mbedtls_x509_buf& issuer = certificate.Get()->issuer_raw;
    const mbedtls_x509_buf& name = authority.Get()->subject_raw;
    return !std::equal(issuer.p, issuer.p + issuer.len, name.p, name.p + name.len);
}

}  // namespace sealkeeper
