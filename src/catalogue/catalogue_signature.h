// The signature of a hash catalogue.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_SIGNATURE_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_SIGNATURE_H

#include <mbedtls/pk.h>

#include <cstddef>
#include <cstdint>
#include <span>

#include "app/result_code.h"

namespace sealkeeper {

// Signs the SHA-256 digest of the whole `image`, with RSASSA-PKCS1-v1_5 (RFC 8017) where the key is
// an RSA key. `outSignature` has room for the header's signature area and may lie inside the image,
// which is hashed first. Fails with `MbedTlsRandNumGenError` when something is missing or the
// random generator cannot be seeded, otherwise with the library's mapped error. `outLength` is 0
// where nothing was signed, and left alone where something is missing. Logs nothing.
ResultCode SignCatalogueImage(mbedtls_pk_context* privateKey, std::span<const std::uint8_t> image,
                              std::uint8_t* outSignature, std::size_t* outLength);

// Checks the signature in a catalogue's bytes, whose header is sound, with the signer's key. What
// is signed depends on the header's signature layout: the whole file with its signature area and
// length zero or, for the older layouts, the file from behind them; never what would be a file of
// the current layout itself, whose signature was not made for this one. Returns the library's
// mapped error when the signature does not verify. The signature in `fileBytes` is zero afterwards.
ResultCode VerifyCatalogueSignature(mbedtls_pk_context* publicKey,
                                    std::span<std::uint8_t> fileBytes);

}  // namespace sealkeeper

#endif
