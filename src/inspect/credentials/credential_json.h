// The report of the command `credentials` as JSON.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_JSON_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_JSON_H

#include <string>

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

[[nodiscard]] std::string CredentialJson(const CredentialFacts& facts,
                                         const CredentialFindings& findings, UtcTime now);

}  // namespace sealkeeper

#endif
