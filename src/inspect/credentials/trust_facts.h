// Gathers the facts about the built-in authority and its revocation list.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FACTS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FACTS_H

#include <optional>
#include <string>

#include "app/result_code.h"
#include "inspect/x509/certificate_details.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

// Facts about the authority or its list that need no parsing.
struct BuiltInFile {
    // The digest of the DER encoding in openssl's form, "AB:CD:...". Empty if the library failed to
    // hash it.
    std::string fingerprint;
    // Empty if the digest is not known.
    std::optional<bool> isDevelopment;
    // If it cannot be parsed, the code with which `sealkeeper` refuses every certificate.
    ResultCode code = ResultCode::Ok;
};

struct AuthorityFacts {
    BuiltInFile file;
    // Empty if it cannot be parsed.
    std::optional<CertificateDetails> certificate;
    // Whether basic constraints and key usage allow signing certificates, and key usage allows
    // signing lists (RFC 5280, 4.2.1.9 and 4.2.1.3).
    bool maySignCertificates = false;
    bool maySignLists = false;
};

struct BuiltInListFacts {
    BuiltInFile file;
    // Empty if it cannot be parsed.
    std::optional<ListDetails> list;
    // Whether its issuer has the name of the authority. The library ignores lists of other issuers.
    bool namesAuthority = false;
    // Whether the authority's key signed it. Empty if that is unknown, as for RSASSA-PSS.
    std::optional<bool> isSignedByAuthority;
};

struct TrustFacts {
    AuthorityFacts authority;
    BuiltInListFacts revocationList;
};

[[nodiscard]] TrustFacts GatherTrustFacts(const TrustMaterial& trust);

}  // namespace sealkeeper

#endif
