#include "inspect/x509/certificate_refusal.h"

#include <algorithm>
#include <array>

namespace sealkeeper {
namespace {

struct Refusal {
    ResultCode code;
    const char* verdict;
};

// What follows "the certificate" in the message.
constexpr std::array kRefusals = {
    Refusal{ResultCode::MbedTlsX509VersionError,
            "is of a version or signed in a way that is not known"},
    Refusal{ResultCode::MbedTlsX509FormatError,
            "is damaged, or not in the form that is needed (DER)"},
    Refusal{ResultCode::MbedTlsX509SigMismatch, "was changed"},
    Refusal{ResultCode::MbedTlsX509VerifyFailed,
            "was not issued by the trusted authority itself, but is, for example, a mod's own"},
    Refusal{ResultCode::CertificateExpired, "has expired"},
    Refusal{ResultCode::CertificateCNMismatch, "names another product id"},
    Refusal{ResultCode::CertificateRevoked, "was revoked"},
};

}  // namespace

std::string CertificateRefusal(ResultCode code, const std::string& certificate) {
    if (code == ResultCode::CertificateRLInvalid) {
        return "the built-in revocation list cannot be used";
    }
    if (code == ResultCode::CertificateRLExpired) {
        return "the built-in revocation list has expired";
    }
    const auto* const found =
        std::find_if(kRefusals.begin(), kRefusals.end(),
                     [code](const Refusal& refusal) { return refusal.code == code; });
    return found == kRefusals.end() ? std::string() : certificate + " " + found->verdict;
}

}  // namespace sealkeeper
