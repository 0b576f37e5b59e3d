// The report of the command `trust` as JSON.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_JSON_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_JSON_H

#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/credentials/trust_facts.h"
#include "inspect/report/json.h"

namespace sealkeeper {

// Fields that cannot be read are left out of both objects.
[[nodiscard]] Json AuthorityJson(const AuthorityFacts& facts, UtcTime now);
[[nodiscard]] Json BuiltInListJson(const BuiltInListFacts& facts, UtcTime now);

[[nodiscard]] std::string TrustJson(const TrustFacts& facts, const CredentialFindings& findings,
                                    UtcTime now);

}  // namespace sealkeeper

#endif
