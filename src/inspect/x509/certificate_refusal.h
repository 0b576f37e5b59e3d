// Words for the codes with which generate and verify refuse a certificate.
#ifndef SEALKEEPER_INSPECT_X509_CERTIFICATE_REFUSAL_H
#define SEALKEEPER_INSPECT_X509_CERTIFICATE_REFUSAL_H

#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// Such as "the certificate has expired", where `certificate` is "the certificate". Empty for codes
// that are not about the certificate, or too general.
[[nodiscard]] std::string CertificateRefusal(ResultCode code, const std::string& certificate);

}  // namespace sealkeeper

#endif
