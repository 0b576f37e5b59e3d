// Judges a certificate.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CERTIFICATE_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CERTIFICATE_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Judges only the certificate in `facts`, not the key beside it or the built-in trust material.
[[nodiscard]] CredentialFindings JudgeCertificate(const CredentialFacts& facts,
                                                  const JudgingTime& time);

}  // namespace sealkeeper

#endif
