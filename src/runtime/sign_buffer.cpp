#include "runtime/sign_buffer.h"

#include "app/console_log.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/random_generator.h"
#include "runtime/signed_file_format.h"

namespace sealkeeper {

bool SignBuffer(mbedtls_pk_context* privateKey, const std::uint8_t* data, std::size_t length,
                std::uint8_t* signature, std::uint64_t* signatureLength) {
    if (privateKey == nullptr || data == nullptr || signature == nullptr ||
        signatureLength == nullptr) {
        Log(LogLevel::Error, "Called with invalid parameters.\n");
        return false;
    }
    *signatureLength = 0;
    *signature = 0;
    RandomGenerator random;
    if (!random.Seed()) {
        return true;
    }
    Sha256Digest digest{};
    std::size_t signatureBytes = 0;
    if (ComputeSha256({data, length}, digest) != 0 ||
        SignSha256Digest(privateKey, digest, {signature, signed_file::kSignatureAreaBytes},
                         signatureBytes, random) != 0) {
        return false;
    }
    *signatureLength = signatureBytes;
    return true;
}

}  // namespace sealkeeper
