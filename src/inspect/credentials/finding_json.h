// Findings as JSON.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_FINDING_JSON_H
#define SEALKEEPER_INSPECT_CREDENTIALS_FINDING_JSON_H

#include "inspect/credentials/credential_finding.h"
#include "inspect/report/json.h"

namespace sealkeeper {

// An array of objects with "severity", "name", "message" and "cure". They have "command" if the
// cure has one to run, and "code" and "result", its name, if generate fails because of the finding.
[[nodiscard]] Json FindingsJson(const CredentialFindings& findings);

}  // namespace sealkeeper

#endif
