#include "inspect/credentials/chain_check.h"

#include "inspect/x509/certificate_details.h"
#include "runtime/certificate_trust.h"

namespace sealkeeper {
namespace {

// Called by the library for each certificate of a chain. The checked one has depth 0.
int KeepFlagsOfFirst(void* kept, mbedtls_x509_crt* /*certificate*/, int depth,
                     std::uint32_t* flags) {
    if (depth == 0) {
        *static_cast<std::uint32_t*>(kept) = *flags;
    }
    return 0;
}

std::optional<UtcTime> RevocationTime(const mbedtls_x509_crl& list,
                                      const mbedtls_x509_crt& certificate) {
    const mbedtls_x509_crl_entry* const entry = FindRevoked(list, certificate);
    return entry == nullptr ? std::nullopt : UtcTimeOf(entry->revocation_date);
}

}  // namespace

std::optional<ChainCheck> CheckChain(const TrustMaterial& trust, const std::string& name,
                                     Certificate& certificate) {
    Certificate authority;
    RevocationList list;
    if (ParseCertificate(trust.authorityDer, authority) != 0 ||
        ParseRevocationList(trust.revocationListDer, list) != 0) {
        return std::nullopt;
    }
    ChainCheck check;
    std::uint32_t flagsOfAll = 0;
    const int result =
        mbedtls_x509_crt_verify(certificate.Get(), authority.Get(), list.Get(), name.c_str(),
                                &flagsOfAll, KeepFlagsOfFirst, &check.flags);
    // After any other error the flags mean nothing.
    if (result != 0 && result != MBEDTLS_ERR_X509_CERT_VERIFY_FAILED) {
        return std::nullopt;
    }
    check.isTrusted = result == 0;
    if ((check.flags & MBEDTLS_X509_BADCERT_REVOKED) != 0) {
        check.revokedOn = RevocationTime(*list.Get(), *certificate.Get());
    }
    return check;
}

}  // namespace sealkeeper
