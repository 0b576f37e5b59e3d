// The report of the command `credentials`.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_TEXT_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_TEXT_H

#include <string>

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"
#include "inspect/report/console.h"

namespace sealkeeper {

// What is known, what is wrong, and what generate makes of it.
[[nodiscard]] std::string CredentialText(const CredentialFacts& facts,
                                         const CredentialFindings& findings, UtcTime now,
                                         const Console& console);

}  // namespace sealkeeper

#endif
