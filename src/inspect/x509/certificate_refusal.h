// Why a certificate is refused, by the code that generate and verify end with.
#ifndef SEALKEEPER_INSPECT_X509_CERTIFICATE_REFUSAL_H
#define SEALKEEPER_INSPECT_X509_CERTIFICATE_REFUSAL_H

#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// As "the certificate has expired", where `certificate` is "the certificate". Empty for a code that
// says nothing of a certificate, or not enough.
[[nodiscard]] std::string CertificateRefusal(ResultCode code, const std::string& certificate);

}  // namespace sealkeeper

#endif
