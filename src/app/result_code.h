// The result codes that every operation reports. The number of the code that an action returns is
// the exit status of the process.
#ifndef SEALKEEPER_APP_RESULT_CODE_H
#define SEALKEEPER_APP_RESULT_CODE_H

#include <cstdint>

namespace sealkeeper {

enum class [[nodiscard]] ResultCode : std::uint32_t{
    Ok = 0,
    SealkeeperUsageError = 1,
    SealkeeperHashtoolGenericError = 2,
    SealkeeperIOError = 3,
    InitFailedConfig = 4,
    InitFailedWorkingDirectory = 5,
    InitFailedTargetDirectory = 6,
    CatalogueError = 7,
    CatalogueIOError = 8,
    FileInvalid = 9,
    CatalogueFileVersionUnsupported = 10,
    MbedTlsGenericError = 11,
    MbedTlsRandNumGenError = 12,
    MbedTlsFileIOError = 13,
    MbedTlsKeyVersionError = 14,
    MbedTlsKeyFormatError = 15,
    MbedTlsKeyPasswordError = 16,
    MbedTlsKeyInvalidPubkey = 17,
    MbedTlsSigLenMismatch = 18,
    MbedTlsX509VersionError = 19,
    MbedTlsX509FormatError = 20,
    MbedTlsX509SigMismatch = 21,
    MbedTlsX509VerifyFailed = 22,
    FileVerificationIOError = 23,
    FileVerificationSizeMismatch = 24,
    FileVerificationHashingError = 25,
    FileVerificationHashMismatch = 26,
    CertIOError = 27,
    Aborted = 28,
    Unvalidated = 29,
    CertificateExpired = 30,
    CertificateCNMismatch = 31,
    CertificateRevoked = 32,
    CertificateRLInvalid = 33,
    CertificateRLExpired = 34,
};

// A missing private key file. It has its own exit status but, deliberately, no text in the table:
// it prints as "Description unavailable".
inline constexpr ResultCode kPrivateKeyFileMissing{35};

// The text of `code`; "Description unavailable" for a code outside the table. For messages in which
// the code may be `Ok`.
[[nodiscard]] const char* ResultCodeText(ResultCode code);

// The text of the failure `code`. Deliberately differs from `ResultCodeText` in one value: `Ok` is
// not a failure and reads "Description unavailable".
[[nodiscard]] const char* ResultFailureText(ResultCode code);

// `code` as the messages show it with "%i".
[[nodiscard]] constexpr int ResultCodeNumber(ResultCode code) {
    return static_cast<int>(code);
}

}  // namespace sealkeeper

#endif
