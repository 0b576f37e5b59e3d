#include "inspect/credentials/signature_check.h"

#include <mbedtls/asn1.h>
#include <mbedtls/md.h>
#include <mbedtls/oid.h>

#include <array>
#include <cstdint>
#include <span>

namespace sealkeeper {
namespace {

// The signature, which follows the signed part and the algorithm (RFC 5280, 4.1 and 5.1). The
// library's field for it is private since 3.0. Empty if there is none.
std::span<const std::uint8_t> SignatureOf(const SignedStructure& structure) {
    unsigned char* position = structure.signedPart.p + structure.signedPart.len;
    const unsigned char* const end = structure.whole.p + structure.whole.len;
    std::size_t length = 0;
    if (mbedtls_asn1_get_tag(&position, end, &length,
                             MBEDTLS_ASN1_CONSTRUCTED | MBEDTLS_ASN1_SEQUENCE) != 0) {
        return {};
    }
    position += length;
    if (mbedtls_asn1_get_bitstring_null(&position, end, &length) != 0) {
        return {};
    }
    return {position, length};
}

}  // namespace

std::optional<bool> IsSignedBy(mbedtls_pk_context& key, const SignedStructure& structure) {
    mbedtls_md_type_t digestType = MBEDTLS_MD_NONE;
    mbedtls_pk_type_t keyType = MBEDTLS_PK_NONE;
    if (mbedtls_oid_get_sig_alg(&structure.algorithm, &digestType, &keyType) != 0) {
        return std::nullopt;
    }
    // Null for RSASSA-PSS, which names its digest in the parameters.
    const mbedtls_md_info_t* const digestInfo = mbedtls_md_info_from_type(digestType);
    std::array<std::uint8_t, MBEDTLS_MD_MAX_SIZE> digest{};
    if (digestInfo == nullptr || mbedtls_md(digestInfo, structure.signedPart.p,
                                            structure.signedPart.len, digest.data()) != 0) {
        return std::nullopt;
    }
    const std::span<const std::uint8_t> signature = SignatureOf(structure);
    return mbedtls_pk_verify(&key, digestType, digest.data(), mbedtls_md_get_size(digestInfo),
                             signature.data(), signature.size()) == 0;
}

}  // namespace sealkeeper
