// What is wrong with the built-in authority and its revocation list.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FINDINGS_H

#include "inspect/credentials/credential_finding.h"
#include "inspect/credentials/trust_facts.h"

namespace sealkeeper {

// What makes the program refuse every certificate, or trust one that it should not, now or soon.
[[nodiscard]] CredentialFindings JudgeTrust(const TrustFacts& facts, const JudgingTime& time);

// A warning of development material, where there is any.
[[nodiscard]] CredentialFindings JudgeDevelopmentTrust(const TrustFacts& facts);

}  // namespace sealkeeper

#endif
