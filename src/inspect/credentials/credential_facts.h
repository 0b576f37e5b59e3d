// Gathers the facts about a certificate, its key and a revocation list, and what generate would
// return.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FACTS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FACTS_H

#include <optional>
#include <string>

#include "app/result_code.h"
#include "inspect/credentials/chain_check.h"
#include "inspect/credentials/examined_file.h"
#include "inspect/credentials/list_issuer.h"
#include "inspect/credentials/trust_facts.h"
#include "inspect/x509/certificate_details.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

// The files to examine.
struct CredentialFiles {
    std::string certificate;
    std::optional<std::string> key;
    std::optional<std::string> revocationList;
    std::optional<std::string> productId;
};

struct CertificateFacts {
    ExaminedFile file;
    // Empty if no certificate can be read. Also set for PEM, which the tool itself refuses.
    std::optional<CertificateDetails> details;
    // Whether its issuer has the name of the authority.
    bool namesAuthority = false;
    // Whether it issued itself. The names must match, and so must the signature, since a mod's
    // certificate may have the same name as its issuer. A signature that cannot be checked, such as
    // RSASSA-PSS, counts as its own.
    bool isSelfSigned = false;
    // Empty if the library did not check it.
    std::optional<ChainCheck> check;
    // The result of generate for this file alone.
    ResultCode code = ResultCode::Ok;
};

struct KeyFacts {
    ExaminedFile file;
    ResultCode code = ResultCode::Ok;
    // Empty if the key cannot be read.
    std::optional<KeyDetails> details;
    // Generate's check that the key belongs to the certificate. Empty if one of the two cannot be
    // read.
    std::optional<ResultCode> pairCode;
};

// The revocation list that generate puts into the catalogue.
struct GivenListFacts {
    ExaminedFile file;
    ResultCode code = ResultCode::Ok;
    // Empty if the file is no DER list. Generate accepts it anyway.
    std::optional<ListDetails> list;
    // Empty if there is no list or no certificate.
    std::optional<ListIssuer> issuer;
    // Whether it comes from the issuer of the certificate and revokes the certificate. A list that
    // another key signed revokes nothing.
    bool revokesCertificate = false;
};

struct CredentialFacts {
    CertificateFacts certificate;
    std::optional<KeyFacts> key;
    std::optional<GivenListFacts> revocationList;
    // As given. Without one, the certificate was checked for one of its own names.
    std::optional<std::string> productId;
    TrustFacts trust;
};

// Reads `files` and checks them against `trust`. Every decision that generate makes is made by the
// tool's own functions. The library asks the system for the time.
[[nodiscard]] CredentialFacts GatherCredentialFacts(const CredentialFiles& files,
                                                    const TrustMaterial& trust);

// Whether certificate and key were each given in place of the other.
[[nodiscard]] bool AreSwapped(const CredentialFacts& facts);

// The first failure that generate would meet in the credentials. Without a key, as if the right one
// were given.
ResultCode GenerateCode(const CredentialFacts& facts);

}  // namespace sealkeeper

#endif
