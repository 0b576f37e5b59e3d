#include "inspect/check/catalogue_failure.h"

#include "catalogue/certificate_path.h"
#include "inspect/report/unread_reason.h"
#include "inspect/x509/certificate_refusal.h"

namespace sealkeeper {
namespace {

constexpr const char* kCertificate = "the certificate beside it";

// Of the codes that say nothing of the certificate alone.
const char* OtherCause(ResultCode code) {
    switch (code) {
        case ResultCode::CatalogueError:
            return "its name is not UTF-8";
        case ResultCode::FileInvalid:
            return "it is damaged or cut off, or no catalogue";
        case ResultCode::MbedTlsGenericError:
            return "it was changed, or not signed with the key of the certificate beside it, or "
                   "that one is damaged";
        default:
            return "it cannot be used";
    }
}

std::string CauseOf(const CatalogueFailure& failure) {
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
    return "'" + failure.path + "': " + CauseOf(failure) + " (" +
           std::to_string(ResultCodeNumber(failure.code)) + " " + ResultFailureText(failure.code) +
           ")";
}

}  // namespace sealkeeper
