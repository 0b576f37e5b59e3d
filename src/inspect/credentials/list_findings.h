// Judges the revocation list that generate puts into the catalogue.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_LIST_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_LIST_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Judges `list`, which goes into a catalogue signed with `certificate`. Generate copies the file
// without parsing it, so only an unreadable file is an error.
[[nodiscard]] CredentialFindings JudgeGivenList(const GivenListFacts& list,
                                                const CertificateFacts& certificate,
                                                const JudgingTime& time);

}  // namespace sealkeeper

#endif
