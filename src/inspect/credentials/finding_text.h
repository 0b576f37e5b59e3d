// Findings as text.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_FINDING_TEXT_H
#define SEALKEEPER_INSPECT_CREDENTIALS_FINDING_TEXT_H

#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// The number of `code` and, in parentheses, its text: "31 (CertificateCNMismatch - check
// ProductId)". The code of a missing key has no text of its own and is put into words.
[[nodiscard]] std::string CodeText(ResultCode code);

// Of each finding, what is wrong and, in further lines, its code, its cure and the command to run,
// where there are such; an empty line after the last. Empty when there are no findings.
[[nodiscard]] std::string FindingsText(const CredentialFindings& findings, const Console& console);

}  // namespace sealkeeper

#endif
