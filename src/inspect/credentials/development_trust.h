// Recognises trust material for development. Its private key is public, so anybody can issue
// certificates with it. The build computes the digests from the files in trust/development.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_DEVELOPMENT_TRUST_H
#define SEALKEEPER_INSPECT_CREDENTIALS_DEVELOPMENT_TRUST_H

#include "runtime/sha256.h"

namespace sealkeeper {

// Both take the digest of the DER encoding.
[[nodiscard]] bool IsDevelopmentAuthority(const Sha256Digest& digest);
[[nodiscard]] bool IsDevelopmentRevocationList(const Sha256Digest& digest);

}  // namespace sealkeeper

#endif
