// What is wrong with a private key.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_KEY_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_KEY_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Of the key `key`, of which `certificate` is the file that is meant to have its certificate.
[[nodiscard]] CredentialFindings JudgeKey(const KeyFacts& key, const ExaminedFile& certificate);

}  // namespace sealkeeper

#endif
