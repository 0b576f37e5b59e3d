// Judges a private key.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_KEY_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_KEY_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Judges `key`. `certificate` is the file meant to hold its certificate.
[[nodiscard]] CredentialFindings JudgeKey(const KeyFacts& key, const ExaminedFile& certificate);

}  // namespace sealkeeper

#endif
