#include "inspect/check/catalogue_failure.h"

#include <algorithm>
#include <array>

#include "catalogue/certificate_path.h"
#include "inspect/report/code_text.h"
#include "inspect/report/unread_reason.h"
#include "inspect/x509/certificate_refusal.h"

namespace sealkeeper {
namespace {

constexpr const char* kCertificate = "the certificate beside it";

struct KnownCause {
    ResultCode code;
    const char* text;
};

// For codes that are not about the certificate alone.
constexpr std::array kOtherCauses = {
    KnownCause{ResultCode::FileInvalid, "it is damaged or cut off, or no catalogue"},
    KnownCause{
        ResultCode::MbedTlsGenericError,
        "it was changed, or not signed with the key of the certificate beside it, or that one is damaged"},
};

const char* OtherCause(ResultCode code) {
    const auto* const found =
        std::find_if(kOtherCauses.begin(), kOtherCauses.end(),
                     [code](const KnownCause& cause) { return cause.code == code; });
    return found == kOtherCauses.end() ? "it cannot be used" : found->text;
}

std::string CauseOf(const CatalogueFailure& failure) {
    if (!failure.isNameUtf8) {
        return "its name is not UTF-8";
    }
    if (!failure.loggedCause.empty()) {
        return failure.loggedCause.substr(0, failure.loggedCause.find_last_not_of('.') + 1);
    }
    if (failure.code == ResultCode::CatalogueIOError) {
        return "it cannot be read: " + UnreadReason(failure.path);
    }
    if (failure.code == ResultCode::CertIOError) {
        return std::string(kCertificate) +
               " cannot be read: " + UnreadReason(CertificatePathOf(failure.path).value_or(""));
    }
    if (failure.code == ResultCode::CertificateCNMismatch) {
        return std::string(kCertificate) + " is of another product id than '" + failure.productId +
               "'";
    }
    const std::string refusal = CertificateRefusal(failure.code, kCertificate);
    return refusal.empty() ? OtherCause(failure.code) : refusal;
}

}  // namespace

std::string CatalogueFailureText(const CatalogueFailure& failure) {
    return "'" + failure.path + "': " + CodeText(failure.code) + ": " + CauseOf(failure);
}

}  // namespace sealkeeper
