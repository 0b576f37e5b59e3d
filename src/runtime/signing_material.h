// What a generate run signs with: the private key, its certificate, and the bytes that are shipped
// with the catalogue.
#ifndef SEALKEEPER_RUNTIME_SIGNING_MATERIAL_H
#define SEALKEEPER_RUNTIME_SIGNING_MATERIAL_H

#include <cstdint>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "runtime/mbedtls_contexts.h"

namespace sealkeeper {

struct SigningMaterial {
    PrivateKey privateKey;
    Certificate certificate;
    // The certificate file as read, for the copy beside the catalogue.
    std::vector<std::uint8_t> certificateBytes;
    // The revocation list file as read, never parsed; empty when none was named.
    std::vector<std::uint8_t> crlBytes;
};

struct SigningFiles {
    std::string privateKeyFile;
    std::string certificateFile;
    // Empty when there is none.
    std::string crlFile;
};

// Parses the private key file at `path`, without a password, into `key`. A failure is logged and
// its code returned; then `key` must not be used.
ResultCode ReadPrivateKey(const std::string& path, PrivateKey& key);

enum class TrustCheck { Required, Skipped };

// Reads `files` into `material`, checks the certificate for `productId` against the built-in trust
// material unless `trustCheck` says to skip that, and checks that key and certificate form a pair.
// The first failure is logged and its code returned; then `material` must not be used.
ResultCode LoadSigningMaterial(const SigningFiles& files, const std::string& productId,
                               TrustCheck trustCheck, SigningMaterial& material);

}  // namespace sealkeeper

#endif
