// Judges a certificate that is not for the given product id.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_NAME_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_NAME_FINDINGS_H

#include <optional>
#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/x509/certificate_details.h"

namespace sealkeeper {

// For a certificate in which the library did not find `productId`. Without a product id: for one
// that has no usable name.
[[nodiscard]] CredentialFinding JudgeMismatch(const CertificateDetails& certificate,
                                              const std::optional<std::string>& productId);

}  // namespace sealkeeper

#endif
