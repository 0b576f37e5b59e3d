// What is known of an authority and its revocation list, as they are built into the program.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FACTS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_TRUST_FACTS_H

#include <optional>
#include <string>

#include "app/result_code.h"
#include "inspect/x509/certificate_details.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

// What can be said of the authority or its list without its being parsed.
struct BuiltInFile {
    // Of the DER encoding, as openssl prints it: "AB:CD:" and so on. Empty where the library failed
    // to hash it.
    std::string fingerprint;
    // By the same digest: nothing where that is not known.
    std::optional<bool> isDevelopment;
    // What `sealkeeper` returns for every certificate because of it, where it cannot be parsed.
    ResultCode code = ResultCode::Ok;
};

struct AuthorityFacts {
    BuiltInFile file;
    // Nothing where it cannot be parsed.
    std::optional<CertificateDetails> certificate;
    // Whether it may sign certificates, by its basic constraints and its key usage, and lists, by
    // the latter (RFC 5280, 4.2.1.9 and 4.2.1.3).
    bool maySignCertificates = false;
    bool maySignLists = false;
};

struct BuiltInListFacts {
    BuiltInFile file;
    // Nothing where it cannot be parsed.
    std::optional<ListDetails> list;
    // Whether it names the authority as its issuer. The library passes over a list of another name.
    bool namesAuthority = false;
    // Whether the authority's key signed it; nothing where that is not known, as of a signature by
    // RSASSA-PSS.
    std::optional<bool> isSignedByAuthority;
};

struct TrustFacts {
    AuthorityFacts authority;
    BuiltInListFacts revocationList;
};

[[nodiscard]] TrustFacts GatherTrustFacts(const TrustMaterial& trust);

}  // namespace sealkeeper

#endif
