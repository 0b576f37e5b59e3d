// Who issued the revocation list that goes into a catalogue, compared with the certificate that the
// catalogue is signed with.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_LIST_ISSUER_H
#define SEALKEEPER_INSPECT_CREDENTIALS_LIST_ISSUER_H

#include <optional>

#include "runtime/mbedtls_contexts.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

struct ListIssuer {
    // Whether the issuer that the list names is the certificate, as for a list of mods, or the
    // issuer of the certificate.
    bool isRelated = false;
    // Whether the key of the named issuer signed the list. Empty if that key is not known, such as
    // that of a mod's issuer, or if the signature cannot be checked, such as one by RSASSA-PSS.
    std::optional<bool> isSigned;
};

// `list` and `certificate` have been parsed. The key of the authority is taken from `trust`.
[[nodiscard]] ListIssuer IssuerOfList(RevocationList& list, Certificate& certificate,
                                      const TrustMaterial& trust);

}  // namespace sealkeeper

#endif
