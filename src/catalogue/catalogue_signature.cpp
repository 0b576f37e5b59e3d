#include "catalogue/catalogue_signature.h"

#include "catalogue/catalogue_format.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_result.h"
#include "runtime/random_generator.h"

namespace sealkeeper {

ResultCode SignCatalogueImage(mbedtls_pk_context* privateKey, std::span<const std::uint8_t> image,
                              std::uint8_t* outSignature, std::size_t* outLength) {
    if (privateKey == nullptr || image.empty() || outSignature == nullptr || outLength == nullptr) {
        return ResultCode::MbedTlsRandNumGenError;
    }
    RandomGenerator random;
    if (!random.Seed()) {
        return ResultCode::MbedTlsRandNumGenError;
    }
    Sha256Digest digest{};
    int result = ComputeSha256(image, digest);
    if (result == 0) {
        result =
            SignSha256Digest(privateKey, digest, {outSignature, signed_file::kSignatureAreaBytes},
                             *outLength, random);
    }
    return MapX509Error(result, 0);
}

}  // namespace sealkeeper
