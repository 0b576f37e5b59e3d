#include "catalogue/catalogue_signature.h"

#include "catalogue/catalogue_format.h"
#include "platform/little_endian.h"
#include "runtime/mbedtls_result.h"
#include "runtime/stored_signature.h"

namespace sealkeeper {
namespace {

// Whether `signedBytes` are what the signature of a file of the current layout covers. Such a
// signature fits them wherever they stand, so behind the header of an older layout it would pass a
// file off that nobody signed. No older file begins so: its lengths would be the magic and version.
bool BeginsAsCurrentLayout(std::span<const std::uint8_t> signedBytes) {
    namespace header = catalogue_header;
    // An older signature covers the header's last bytes, which a catalogue has.
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
