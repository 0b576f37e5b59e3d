#include "app/result_code.h"

#include <array>
#include <cstdint>

namespace sealkeeper {
namespace {

constexpr const char* kUnknownCodeText = "Description unavailable";

// Indexed by the code's number.
constexpr std::array<const char*, 35> kTexts = {
    "Ok",
    "SealkeeperUsageError",
    "SealkeeperHashtoolGenericError",
    "SealkeeperIOError",
    "InitFailedConfig",
    "InitFailedWorkingDirectory",
    "InitFailedTargetDirectory",
    "CatalogueError",
    "CatalogueIOError",
    "FileInvalid",
    "CatalogueFileVersionUnsupported",
    "MbedTlsGenericError",
    "MbedTlsRandNumGenError",
    "MbedTlsFileIOError",
    "MbedTlsKeyVersionError",
    "MbedTlsKeyFormatError",
    "MbedTlsKeyPasswordError",
    "MbedTlsKeyInvalidPubkey",
    "MbedTlsSigLenMismatch",
    "MbedTlsX509VersionError",
    "MbedTlsX509FormatError",
    "MbedTlsX509SigMismatch",
    "MbedTlsX509VerifyFailed",
    "FileVerificationIOError",
    "FileVerificationSizeMismatch",
    "FileVerificationHashingError",
    "FileVerificationHashMismatch",
    "CertIOError",
    "Aborted",
    "Unvalidated",
    "CertificateExpired - check certificate",
    "CertificateCNMismatch - check ProductId",
    "CertificateRevoked - check certificate",
    "CertificateRLInvalid - check CRL",
    "CertificateRLExpired - check CRL",
};
static_assert(kTexts.size() == static_cast<std::uint32_t>(ResultCode::CertificateRLExpired) + 1);

}  // namespace

const char* ResultCodeText(ResultCode code) {
    const auto index = static_cast<std::uint32_t>(code);
    return index < kTexts.size() ? kTexts[index] : kUnknownCodeText;
}

const char* ResultFailureText(ResultCode code) {
    return code == ResultCode::Ok ? kUnknownCodeText : ResultCodeText(code);
}

}  // namespace sealkeeper
