// Findings as text.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_FINDING_TEXT_H
#define SEALKEEPER_INSPECT_CREDENTIALS_FINDING_TEXT_H

#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// For each finding the message, and on further lines its code, its cure and the command, if there
// are any. An empty line follows the last. Empty if there are no findings.
[[nodiscard]] std::string FindingsText(const CredentialFindings& findings, const Console& console);

}  // namespace sealkeeper

#endif
