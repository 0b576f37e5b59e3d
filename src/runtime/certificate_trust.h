// Decides whether a developer's certificate is trusted for a game: it must chain to an authority,
// must not be revoked, and must name the game's product id as its common name. Certificates and
// revocation lists are DER only.
#ifndef SEALKEEPER_RUNTIME_CERTIFICATE_TRUST_H
#define SEALKEEPER_RUNTIME_CERTIFICATE_TRUST_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/trust_material.h"

namespace sealkeeper {

using ByteView = std::span<const std::uint8_t>;

// The bytes of the certificate file at `path`; nothing when it cannot be read. A file longer than
// any certificate (1 MiB) is cut to that length.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> ReadCertificateBytes(
    const std::string& path);

// Parses `bytes` as one DER certificate into `certificate`. Returns 0 or the library's error, which
// leaves `certificate` empty.
[[nodiscard]] int ParseCertificate(ByteView bytes, Certificate& certificate);

// The same of a revocation list.
[[nodiscard]] int ParseRevocationList(ByteView bytes, RevocationList& list);

// Checks `certificateBytes` against `trust` with `productId` as the expected name. If that fails
// and `parentBytes` is not empty, the certificate is taken for a mod's: the parent is checked
// against `trust` in its place, and the certificate against the parent and the parent's
// `parentCrlBytes` (may be empty), with no expected name. `certificate` is left parsed on `Ok` and
// empty on failure. Logs nothing.
ResultCode VerifySigningCertificate(const TrustMaterial& trust, const std::string& productId,
                                    ByteView certificateBytes, ByteView parentBytes,
                                    ByteView parentCrlBytes, Certificate& certificate);

// Checks a parsed certificate against `trust` with `productId` as the expected name, and logs the
// outcome.
[[nodiscard]] bool CheckCertificateTrust(const TrustMaterial& trust, Certificate& certificate,
                                         const std::string& productId);

// Whether a parsed certificate names an issuer other than the authority of `trust`, as a mod's
// certificate does. False also when the authority cannot be parsed.
[[nodiscard]] bool IsFromAnotherIssuer(const TrustMaterial& trust, Certificate& certificate);

}  // namespace sealkeeper

#endif
