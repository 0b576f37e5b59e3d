// What is wrong with a certificate.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CERTIFICATE_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CERTIFICATE_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Of the certificate of `facts` alone: not of the key beside it, nor of what is built in.
[[nodiscard]] CredentialFindings JudgeCertificate(const CredentialFacts& facts,
                                                  const JudgingTime& time);

}  // namespace sealkeeper

#endif
