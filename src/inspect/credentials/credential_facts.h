// What is known of a certificate, its key and a revocation list, and what generate makes of them.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FACTS_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FACTS_H

#include <optional>
#include <string>

#include "app/result_code.h"
#include "inspect/credentials/chain_check.h"
#include "inspect/credentials/examined_file.h"
#include "inspect/credentials/trust_facts.h"
#include "inspect/x509/certificate_details.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

// What was asked for.
struct CredentialFiles {
    std::string certificate;
    std::optional<std::string> key;
    std::optional<std::string> revocationList;
    std::optional<std::string> productId;
};

struct CertificateFacts {
    ExaminedFile file;
    // Also of a certificate in PEM form, which the tool does not take. Nothing where none can be
    // read.
    std::optional<CertificateDetails> details;
    // Whether the authority is its issuer by name.
    bool namesAuthority = false;
    // Whether it is its own issuer: by name and, because a mod's certificate may have the name of
    // its issuer too, by its signature. One that cannot be checked, as by RSASSA-PSS, counts as its
    // own.
    bool isSelfSigned = false;
    // Nothing where the library did not check it.
    std::optional<ChainCheck> check;
    // What generate makes of the file, by itself.
    ResultCode code = ResultCode::Ok;
};

struct KeyFacts {
    ExaminedFile file;
    ResultCode code = ResultCode::Ok;
    // Nothing where it cannot be read.
    std::optional<KeyDetails> details;
    // Whether it belongs to the certificate, as generate tells it; nothing where one of the two
    // cannot be read.
    std::optional<ResultCode> pairCode;
};

// The revocation list that generate puts into the catalogue.
struct GivenListFacts {
    ExaminedFile file;
    ResultCode code = ResultCode::Ok;
    // Nothing where it is no list in DER form. Generate does not mind that.
    std::optional<ListDetails> list;
    // Whether the issuer of the certificate made it, and has the certificate in it.
    bool revokesCertificate = false;
};

struct CredentialFacts {
    CertificateFacts certificate;
    std::optional<KeyFacts> key;
    std::optional<GivenListFacts> revocationList;
    // As it was given. Where none was, the certificate was checked for a name of its own.
    std::optional<std::string> productId;
    TrustFacts trust;
};

// Reads what `files` names and checks it against `trust`, with the tool's own functions where they
// decide. The library asks the system for the time.
[[nodiscard]] CredentialFacts GatherCredentialFacts(const CredentialFiles& files,
                                                    const TrustMaterial& trust);

// Whether the certificate was given for the key and a key for the certificate.
[[nodiscard]] bool AreSwapped(const CredentialFacts& facts);

// The result code of generate as far as the credentials decide it: of what it finds first. Without
// a key, that of a run with the right one.
ResultCode GenerateCode(const CredentialFacts& facts);

}  // namespace sealkeeper

#endif
