// Judges the built-in authority and its revocation list.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FINDINGS_H

#include "inspect/credentials/credential_finding.h"
#include "inspect/credentials/trust_facts.h"

namespace sealkeeper {

// Reports why the program refuses every certificate, or trusts too many, now or soon.
[[nodiscard]] CredentialFindings JudgeTrust(const TrustFacts& facts, const JudgingTime& time);

// Warns of development material.
[[nodiscard]] CredentialFindings JudgeDevelopmentTrust(const TrustFacts& facts);

}  // namespace sealkeeper

#endif
