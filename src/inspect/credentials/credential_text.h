// The report of the command `credentials` as text.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_TEXT_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_TEXT_H

#include <string>

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// The facts, the findings and the result of generate.
[[nodiscard]] std::string CredentialText(const CredentialFacts& facts,
                                         const CredentialFindings& findings, UtcTime now,
                                         const Console& console);

}  // namespace sealkeeper

#endif
