#include "runtime/stored_signature.h"

#include <algorithm>

#include "platform/little_endian.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/random_generator.h"
#include "runtime/sha256.h"

namespace sealkeeper {

SigningOutcome MakeSignature(mbedtls_pk_context* privateKey, std::span<const std::uint8_t> data,
                             std::span<std::uint8_t, signed_file::kSignatureAreaBytes> area) {
    RandomGenerator random;
    if (!random.Seed()) {
        return {};
    }
    Sha256Digest digest{};
    if (const int result = ComputeSha256(data, digest); result != 0) {
        return {true, result, 0};
    }
    std::size_t lengthBytes = 0;
    const int result = SignSha256Digest(privateKey, digest, area, lengthBytes, random);
    return {true, result, result == 0 ? lengthBytes : 0};
}

StoredSignature TakeSignature(std::span<std::uint8_t> file, std::size_t areaOffset) {
    StoredSignature signature;
    const auto area = file.subspan(areaOffset, signature.area.size());
    const auto length = file.subspan(areaOffset + area.size(), sizeof(signature.lengthBytes));
    std::copy(area.begin(), area.end(), signature.area.begin());
    signature.lengthBytes = LoadLittleEndian<std::uint32_t>(length);
    std::fill(area.begin(), area.end(), std::uint8_t{0});
    std::fill(length.begin(), length.end(), std::uint8_t{0});
    return signature;
}

int VerifySignature(mbedtls_pk_context* publicKey, std::span<const std::uint8_t> signedBytes,
                    const StoredSignature& signature) {
    if (signature.lengthBytes > signature.area.size()) {
        return MBEDTLS_ERR_PK_SIG_LEN_MISMATCH;
    }
    Sha256Digest digest{};
    if (const int result = ComputeSha256(signedBytes, digest); result != 0) {
        return result;
    }
    return mbedtls_pk_verify(publicKey, MBEDTLS_MD_SHA256, digest.data(), digest.size(),
                             signature.area.data(), signature.lengthBytes);
}

}  // namespace sealkeeper
