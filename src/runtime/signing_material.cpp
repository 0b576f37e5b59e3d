#include "runtime/signing_material.h"

#include <mbedtls/pk.h>

#include <utility>

#include "app/console_log.h"
#include "platform/file_io.h"
#include "platform/file_system.h"
#include "runtime/certificate_trust.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_result.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

ResultCode ReadRevocationList(const std::string& path, SigningMaterial& material) {
    if (path.empty()) {
        return ResultCode::Ok;
    }
    auto bytes = ReadWholeFile(path);
    if (!bytes) {
        Log(LogLevel::Error, "Could not locate the CRL file '%s'\n", path.c_str());
        return ResultCode::CertIOError;
    }
    material.crlBytes = std::move(*bytes);
    return ResultCode::Ok;
}

ResultCode ReadCertificateFile(const std::string& path, SigningMaterial& material) {
    auto bytes = ReadWholeFile(path);
    if (!bytes) {
        Log(LogLevel::Error, "Failed to read certificate file %s\n", path.c_str());
        return ResultCode::CertIOError;
    }
    material.certificateBytes = std::move(*bytes);
    return ResultCode::Ok;
}

// The library opens the file itself, so it must not be given what cannot be a key file: it would
// wait for the writer of a FIFO, and allocate as many bytes as a directory claims to have. A file
// of unknown type may be either.
int ParseKey(const std::string& path, FileType type, PrivateKey& key) {
    if (type == FileType::Fifo || type == FileType::Directory || type == FileType::Unknown) {
        return MBEDTLS_ERR_PK_FILE_IO_ERROR;
    }
    return ParsePrivateKeyFile(key.Get(), path.c_str());
}

ResultCode ParseUncheckedCertificate(const std::string& path, SigningMaterial& material) {
    if (ParseCertificate(material.certificateBytes, material.certificate) < 0) {
        Log(LogLevel::Error, "Error parsing certificate file '%s'.\n", path.c_str());
        return ResultCode::CertIOError;
    }
    return ResultCode::Ok;
}

ResultCode ParseTrustedCertificate(const std::string& path, const std::string& productId,
                                   SigningMaterial& material) {
    const ResultCode code = VerifySigningCertificate(
        BuiltInTrustMaterial(), productId, material.certificateBytes, {}, {}, material.certificate);
    if (code == ResultCode::Ok) {
        return code;
    }
    Log(LogLevel::Error, "Error verifying certificate file '%s' (%i).\n", path.c_str(),
        ResultCodeNumber(code));
    Log(LogLevel::Error,
        "Make sure this certificate matches the product ID specified as an argument.\n");
    if (code == ResultCode::MbedTlsX509VerifyFailed) {
        Log(LogLevel::Error,
            "    The chain from this certificate to the game's trusted certificate authority is not valid.\n    Check that %s is a certificate issued from your game's hash catalogue CA.\n",
            path.c_str());
    }
    return code;
}

ResultCode CheckPair(const SigningFiles& files, const SigningMaterial& material) {
    const ResultCode code =
        MapX509Error(CheckKeyPair(&material.certificate.Get()->pk, material.privateKey.Get()));
    if (code != ResultCode::Ok) {
        Log(LogLevel::Error,
            "Public key in certificate file %s does not match private key file '%s'.\n",
            files.certificateFile.c_str(), files.privateKeyFile.c_str());
    }
    return code;
}

}  // namespace

ResultCode ReadPrivateKey(const std::string& path, PrivateKey& key) {
    const FileType type = GetFileType(path);
    if (type == FileType::Missing) {
        Log(LogLevel::Error, "Could not locate the private key file '%s'\n", path.c_str());
        return kPrivateKeyFileMissing;
    }
    const ResultCode code = MapKeyError(ParseKey(path, type, key));
    if (code != ResultCode::Ok) {
        Log(LogLevel::Error, "Error reading RSA private key file '%s' (%i).\n", path.c_str(),
            ResultCodeNumber(code));
    }
    return code;
}

ResultCode LoadSigningMaterial(const SigningFiles& files, const std::string& productId,
                               TrustCheck trustCheck, SigningMaterial& material) {
    if (const ResultCode code = ReadRevocationList(files.crlFile, material);
        code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = ReadCertificateFile(files.certificateFile, material);
        code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = ReadPrivateKey(files.privateKeyFile, material.privateKey);
        code != ResultCode::Ok) {
        return code;
    }
    const ResultCode code =
        trustCheck == TrustCheck::Skipped
            ? ParseUncheckedCertificate(files.certificateFile, material)
            : ParseTrustedCertificate(files.certificateFile, productId, material);
    if (code != ResultCode::Ok) {
        return code;
    }
    return CheckPair(files, material);
}

}  // namespace sealkeeper
