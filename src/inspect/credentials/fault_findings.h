// Reports what the system or the library failed to tell. An incomplete report must not look as if
// all were well.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_FAULT_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_FAULT_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

[[nodiscard]] CredentialFindings JudgeFaults(const CredentialFacts& facts);

}  // namespace sealkeeper

#endif
