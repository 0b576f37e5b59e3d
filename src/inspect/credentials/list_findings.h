// What is wrong with the revocation list that generate puts into the catalogue.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_LIST_FINDINGS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_LIST_FINDINGS_H

#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_finding.h"

namespace sealkeeper {

// Of `list`, which goes into a catalogue that is signed with `certificate`. Generate takes the file
// as it is: an error is only what it cannot read.
[[nodiscard]] CredentialFindings JudgeGivenList(const GivenListFacts& list,
                                                const CertificateFacts& certificate,
                                                const JudgingTime& time);

}  // namespace sealkeeper

#endif
