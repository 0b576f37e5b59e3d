// Findings as text and as JSON.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_FINDING_TEXT_H
#define SEALKEEPER_INSPECT_CREDENTIALS_FINDING_TEXT_H

#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/report/console.h"
#include "inspect/report/json.h"

namespace sealkeeper {

// "31 (CertificateCNMismatch - check ProductId)"; a code that has no text of its own with what the
// system's page on exit statuses says.
[[nodiscard]] std::string CodeText(ResultCode code);

// Two lines or more each: what is wrong, and what to do; empty when there are none.
[[nodiscard]] std::string FindingsText(const CredentialFindings& findings, const Console& console);

// An array of objects "severity", "name", "message", "cure" and, where generate returns one,
// "code".
[[nodiscard]] Json FindingsJson(const CredentialFindings& findings);

}  // namespace sealkeeper

#endif
