// Judges all credentials together.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Errors come before warnings. If `GenerateCode(facts)` is a failure, one of the errors has that
// code.
[[nodiscard]] CredentialFindings JudgeCredentials(const CredentialFacts& facts,
                                                  const JudgingTime& time);

}  // namespace sealkeeper

#endif
