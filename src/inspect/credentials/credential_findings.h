// What is wrong with credentials, one with the other.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Errors before warnings. There is an error with the code `GenerateCode(facts)` where that tells of
// a failure.
[[nodiscard]] CredentialFindings JudgeCredentials(const CredentialFacts& facts,
                                                  const JudgingTime& time);

}  // namespace sealkeeper

#endif
