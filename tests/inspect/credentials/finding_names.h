#ifndef SEALKEEPER_TESTS_INSPECT_CREDENTIALS_FINDING_NAMES_H
#define SEALKEEPER_TESTS_INSPECT_CREDENTIALS_FINDING_NAMES_H

#include <string>

#include "inspect/credentials/credential_findings.h"

namespace sealkeeper::test {

// The names of the findings, in their order, with a blank between two.
[[nodiscard]] inline std::string Names(const CredentialFindings& findings) {
    std::string names;
    for (const CredentialFinding& finding : findings) {
        names += std::string(names.empty() ? "" : " ") + finding.name;
    }
    return names;
}

}  // namespace sealkeeper::test

#endif
