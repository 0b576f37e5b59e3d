// The report of the command `trust` as text.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_TEXT_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_TEXT_H

#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/credentials/trust_facts.h"
#include "inspect/report/console.h"

namespace sealkeeper {

[[nodiscard]] std::string TrustText(const TrustFacts& facts, const CredentialFindings& findings,
                                    UtcTime now, const Console& console);

}  // namespace sealkeeper

#endif
