#include "inspect/credentials/trust_facts.h"

#include "inspect/credentials/development_trust.h"
#include "inspect/credentials/signature_check.h"
#include "inspect/report/hex_text.h"
#include "runtime/certificate_trust.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/mbedtls_result.h"
#include "runtime/sha256.h"

namespace sealkeeper {
namespace {

// Leaves `code` unset. `isDevelopment` recognises a digest.
BuiltInFile FactsOfFile(ByteView der, bool (*isDevelopment)(const Sha256Digest&)) {
    BuiltInFile file;
    Sha256Digest digest{};
    if (ComputeSha256(der, digest) == 0) {
        file.fingerprint = SeparatedHexText(digest, ':');
        file.isDevelopment = isDevelopment(digest);
    }
    return file;
}

AuthorityFacts FactsOfAuthority(ByteView der, Certificate& authority) {
    AuthorityFacts facts;
    facts.file = FactsOfFile(der, IsDevelopmentAuthority);
    facts.file.code = MapX509Error(ParseCertificate(der, authority));
    if (facts.file.code == ResultCode::Ok) {
        facts.certificate = DetailsOfCertificate(*authority.Get());
        facts.maySignCertificates =
            MayIssueCertificates(*authority.Get()) &&
            mbedtls_x509_crt_check_key_usage(authority.Get(), MBEDTLS_X509_KU_KEY_CERT_SIGN) == 0;
        facts.maySignLists =
            mbedtls_x509_crt_check_key_usage(authority.Get(), MBEDTLS_X509_KU_CRL_SIGN) == 0;
    }
    return facts;
}

BuiltInListFacts FactsOfList(ByteView der, RevocationList& list) {
    BuiltInListFacts facts;
    facts.file = FactsOfFile(der, IsDevelopmentRevocationList);
    facts.file.code = MapX509Error(ParseRevocationList(der, list));
    if (facts.file.code == ResultCode::Ok) {
        facts.list = DetailsOfList(*list.Get());
    }
    return facts;
}

}  // namespace

TrustFacts GatherTrustFacts(const TrustMaterial& trust) {
    Certificate authority;
    RevocationList list;
    TrustFacts facts;
    facts.authority = FactsOfAuthority(trust.authorityDer, authority);
    facts.revocationList = FactsOfList(trust.revocationListDer, list);
    if (facts.authority.certificate && facts.revocationList.list) {
        facts.revocationList.namesAuthority =
            IsSameEncoding(list.Get()->issuer_raw, authority.Get()->subject_raw);
        facts.revocationList.isSignedByAuthority = IsSignedBy(
            authority.Get()->pk, {list.Get()->raw, list.Get()->tbs, list.Get()->sig_oid});
    }
    return facts;
}

}  // namespace sealkeeper
