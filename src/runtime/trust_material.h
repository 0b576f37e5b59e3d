// The trust material compiled into the program. The build makes it from the DER files that
// SEALKEEPER_TRUST_CA and SEALKEEPER_TRUST_CRL name.
#ifndef SEALKEEPER_RUNTIME_TRUST_MATERIAL_H
#define SEALKEEPER_RUNTIME_TRUST_MATERIAL_H

#include <cstdint>
#include <span>

namespace sealkeeper {

// DER encodings: an X.509 certificate and a revocation list that it issued (RFC 5280).
struct TrustMaterial {
    std::span<const std::uint8_t> authorityDer;
    std::span<const std::uint8_t> revocationListDer;
};

// The material that every check of a certificate uses.
[[nodiscard]] TrustMaterial BuiltInTrustMaterial();

}  // namespace sealkeeper

#endif
