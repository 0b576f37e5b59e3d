// The signature of a hash catalogue.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_SIGNATURE_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_SIGNATURE_H

#include <mbedtls/pk.h>

#include <cstddef>
#include <cstdint>
#include <span>

#include "app/result_code.h"

namespace sealkeeper {

// Signs the SHA-256 digest of the whole `image`, with RSASSA-PKCS1-v1_5 (RFC 8017) if the key is an
// RSA key. `outSignature` has room for the header's signature area and may lie inside the image,
// which is hashed first. Fails with `MbedTlsRandNumGenError` when an argument is null or empty or
// the random generator cannot be seeded, otherwise with the library's mapped error. On failure
// `*outLength` is 0, or unchanged when an argument is null or empty. Logs nothing.
ResultCode SignCatalogueImage(mbedtls_pk_context* privateKey, std::span<const std::uint8_t> image,
                              std::uint8_t* outSignature, std::size_t* outLength);

// Checks the signature in `fileBytes`, a catalogue whose header is valid, with the signer's key.
// The header's signature layout decides what is signed: the whole file with its signature area and
// length zero or, for older layouts, everything after these two fields. A file of the current
// layout that is wrapped in an older header is rejected with `MbedTlsGenericError`. Returns the
// library's mapped error when the signature does not verify. The signature in `fileBytes` is zero
// afterwards.
ResultCode VerifyCatalogueSignature(mbedtls_pk_context* publicKey,
                                    std::span<std::uint8_t> fileBytes);

}  // namespace sealkeeper

#endif
