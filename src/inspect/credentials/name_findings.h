// A certificate that is not for the product id that was given.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_NAME_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_NAME_FINDINGS_H

#include <optional>
#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/x509/certificate_details.h"

namespace sealkeeper {

// Of a certificate in which the library did not find `productId`, if there is one, else any name.
[[nodiscard]] CredentialFinding JudgeMismatch(const CertificateDetails& certificate,
                                              const std::optional<std::string>& productId);

}  // namespace sealkeeper

#endif
