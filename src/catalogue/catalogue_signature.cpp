#include "catalogue/catalogue_signature.h"

#include "catalogue/catalogue_format.h"
#include "platform/little_endian.h"
#include "runtime/mbedtls_result.h"
#include "runtime/stored_signature.h"

namespace sealkeeper {
namespace {

// Detects a current file re-wrapped after an old header, which must be rejected. The signature of a
// current file covers the whole file, so it would also verify there, and pass off a file that
// nobody signed. No genuine older file begins like this: the magic and version would be its block
// lengths.
bool BeginsAsCurrentLayout(std::span<const std::uint8_t> signedBytes) {
    namespace header = catalogue_header;
    // An older signature covers the last bytes of the header, which every catalogue has.
    static_assert(header::kSizeBytes - header::kCrlLengthOffset >= header::kSignatureOffset);
    return signed_file::HasMagic(signedBytes) &&
           LoadLittleEndian<std::uint16_t>(signedBytes.subspan(header::kFormatVersionOffset)) ==
               header::kFormatVersion &&
           LoadLittleEndian<std::uint16_t>(signedBytes.subspan(header::kSignatureLayoutOffset)) ==
               header::kSignatureLayout;
}

}  // namespace

ResultCode SignCatalogueImage(mbedtls_pk_context* privateKey, std::span<const std::uint8_t> image,
                              std::uint8_t* outSignature, std::size_t* outLength) {
    if (privateKey == nullptr || image.empty() || outSignature == nullptr || outLength == nullptr) {
        return ResultCode::MbedTlsRandNumGenError;
    }
    const std::span<std::uint8_t, signed_file::kSignatureAreaBytes> area(
        outSignature, signed_file::kSignatureAreaBytes);
    const SigningOutcome outcome = MakeSignature(privateKey, image, area);
    *outLength = outcome.lengthBytes;
    return outcome.isSeeded ? MapX509Error(outcome.result) : ResultCode::MbedTlsRandNumGenError;
}

ResultCode VerifyCatalogueSignature(mbedtls_pk_context* publicKey,
                                    std::span<std::uint8_t> fileBytes) {
    namespace header = catalogue_header;
    const auto layout =
        LoadLittleEndian<std::uint16_t>(fileBytes.subspan(header::kSignatureLayoutOffset));
    const StoredSignature signature = TakeSignature(fileBytes, header::kSignatureOffset);
    const auto signedBytes = layout == header::kSignatureLayout
                                 ? fileBytes
                                 : fileBytes.subspan(header::kCrlLengthOffset);
    if (layout != header::kSignatureLayout && BeginsAsCurrentLayout(signedBytes)) {
        return ResultCode::MbedTlsGenericError;
    }
    return MapX509Error(VerifySignature(publicKey, signedBytes, signature));
}

}  // namespace sealkeeper
