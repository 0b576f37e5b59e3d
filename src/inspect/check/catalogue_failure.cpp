#include "inspect/check/catalogue_failure.h"

#include <algorithm>
#include <array>

#include "catalogue/catalogue_format.h"
#include "inspect/report/unread_reason.h"

namespace sealkeeper {
namespace {

struct KnownCause {
    ResultCode code;
    const char* text;
};

// Of the codes that reading a catalogue gives, those that say it all. 22 is also that of a
// certificate that is good, but was issued by another one than the authority.
constexpr std::array kKnownCauses = {
    KnownCause{ResultCode::CatalogueError, "its name is not UTF-8"},
    KnownCause{ResultCode::FileInvalid, "it is damaged or cut off, or no catalogue"},
    KnownCause{ResultCode::MbedTlsGenericError,
               "it was changed, or not signed with the key of the certificate beside it, or that "
               "one is damaged"},
    KnownCause{ResultCode::MbedTlsX509VersionError,
               "the certificate beside it is of a version or signed in a way that is not known"},
    KnownCause{ResultCode::MbedTlsX509FormatError,
               "the certificate beside it is damaged, or not in the form that is needed (DER)"},
    KnownCause{ResultCode::MbedTlsX509SigMismatch, "the certificate beside it was changed"},
    KnownCause{ResultCode::MbedTlsX509VerifyFailed,
               "the certificate beside it was not issued by the trusted authority itself, but is, "
               "for example, a mod's own"},
    KnownCause{ResultCode::CertificateExpired, "the certificate beside it has expired"},
    KnownCause{ResultCode::CertificateRevoked, "the certificate beside it was revoked"},
    KnownCause{ResultCode::CertificateRLInvalid, "the built-in revocation list cannot be used"},
    KnownCause{ResultCode::CertificateRLExpired, "the built-in revocation list has expired"},
};

std::string CertificatePathOf(const std::string& cataloguePath) {
    return cataloguePath.substr(0, cataloguePath.rfind('.')) + kCertificateExtension;
}

std::string CauseOf(const CatalogueFailure& failure) {
    if (!failure.loggedCause.empty()) {
        return failure.loggedCause.substr(0, failure.loggedCause.find_last_not_of('.') + 1);
    }
    if (failure.code == ResultCode::CatalogueIOError) {
        return "it cannot be read: " + UnreadReason(failure.path);
    }
    if (failure.code == ResultCode::CertIOError) {
        return "the certificate beside it cannot be read: " +
               UnreadReason(CertificatePathOf(failure.path));
    }
    if (failure.code == ResultCode::CertificateCNMismatch) {
        return "the certificate beside it is of another product id than '" + failure.productId +
               "'";
    }
    const auto* const known =
        std::find_if(kKnownCauses.begin(), kKnownCauses.end(),
                     [&](const KnownCause& cause) { return cause.code == failure.code; });
    return known == kKnownCauses.end() ? "it cannot be used" : known->text;
}

}  // namespace

std::string CatalogueFailureText(const CatalogueFailure& failure) {
    return "'" + failure.path + "': " + CauseOf(failure) + " (" +
           std::to_string(ResultCodeNumber(failure.code)) + " " + ResultFailureText(failure.code) +
           ")";
}

}  // namespace sealkeeper
