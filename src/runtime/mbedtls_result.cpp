#include "runtime/mbedtls_result.h"

#include <mbedtls/pk.h>
#include <mbedtls/rsa.h>
#include <mbedtls/x509.h>

namespace sealkeeper {
namespace {

ResultCode MapVerificationFlags(std::uint32_t flags) {
    if ((flags & MBEDTLS_X509_BADCERT_EXPIRED) != 0) {
        return ResultCode::CertificateExpired;
    }
    if ((flags & MBEDTLS_X509_BADCERT_REVOKED) != 0) {
        return ResultCode::CertificateRevoked;
    }
    if ((flags & MBEDTLS_X509_BADCERT_CN_MISMATCH) != 0) {
        return ResultCode::CertificateCNMismatch;
    }
    if ((flags & MBEDTLS_X509_BADCRL_NOT_TRUSTED) != 0) {
        return ResultCode::CertificateRLInvalid;
    }
    if ((flags & MBEDTLS_X509_BADCRL_EXPIRED) != 0) {
        return ResultCode::CertificateRLExpired;
    }
    return ResultCode::MbedTlsX509VerifyFailed;
}

}  // namespace

ResultCode MapKeyError(int libraryResult) {
    if (libraryResult >= 0) {
        return ResultCode::Ok;
    }
    switch (libraryResult) {
        case MBEDTLS_ERR_PK_FILE_IO_ERROR:
            return ResultCode::MbedTlsFileIOError;
        case MBEDTLS_ERR_PK_KEY_INVALID_VERSION:
            return ResultCode::MbedTlsKeyVersionError;
        case MBEDTLS_ERR_PK_KEY_INVALID_FORMAT:
            return ResultCode::MbedTlsKeyFormatError;
        case MBEDTLS_ERR_PK_PASSWORD_REQUIRED:
        case MBEDTLS_ERR_PK_PASSWORD_MISMATCH:
            return ResultCode::MbedTlsKeyPasswordError;
        case MBEDTLS_ERR_PK_INVALID_PUBKEY:
        case MBEDTLS_ERR_RSA_VERIFY_FAILED:
            return ResultCode::MbedTlsKeyInvalidPubkey;
        case MBEDTLS_ERR_PK_SIG_LEN_MISMATCH:
            return ResultCode::MbedTlsSigLenMismatch;
        default:
            return ResultCode::MbedTlsGenericError;
    }
}

ResultCode MapX509Error(int libraryResult, std::uint32_t verificationFlags) {
    switch (libraryResult) {
        case 0:
            return ResultCode::Ok;
        case MBEDTLS_ERR_X509_BAD_INPUT_DATA:
        case MBEDTLS_ERR_X509_CERT_UNKNOWN_FORMAT:
        case MBEDTLS_ERR_X509_INVALID_ALG:
        case MBEDTLS_ERR_X509_INVALID_SERIAL:
        case MBEDTLS_ERR_X509_INVALID_FORMAT:
            return ResultCode::MbedTlsX509FormatError;
        case MBEDTLS_ERR_X509_SIG_MISMATCH:
            return ResultCode::MbedTlsX509SigMismatch;
        case MBEDTLS_ERR_X509_UNKNOWN_SIG_ALG:
        case MBEDTLS_ERR_X509_UNKNOWN_VERSION:
        case MBEDTLS_ERR_X509_INVALID_VERSION:
            return ResultCode::MbedTlsX509VersionError;
        case MBEDTLS_ERR_X509_CERT_VERIFY_FAILED:
            return MapVerificationFlags(verificationFlags);
        default:
            return ResultCode::MbedTlsGenericError;
    }
}

}  // namespace sealkeeper
