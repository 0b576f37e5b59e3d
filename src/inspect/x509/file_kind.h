// What a file that was meant to be a certificate, a key or a revocation list really is.
#ifndef SEALKEEPER_INSPECT_X509_FILE_KIND_H
#define SEALKEEPER_INSPECT_X509_FILE_KIND_H

#include <cstdint>
#include <span>

namespace sealkeeper {

enum class FileKind {
    Unknown,
    Empty,
    Utf16Text,
    DerCertificate,
    PemCertificate,
    DerRevocationList,
    PemRevocationList,
    DerPrivateKey,
    PemPrivateKey,
    // With a password.
    DerEncryptedKey,
    PemEncryptedKey,
    OpenSshKey,
    PublicKey,
    DerCertificateRequest,
    PemCertificateRequest,
    // Certificates in one file.
    DerPkcs7,
    PemPkcs7,
    // A key and its certificates in one file, as a rule with a password.
    Pkcs12,
    // DER whose first length reaches past the end of the file.
    CutOffDer,
    // A certificate or a list with something in it that the library cannot read.
    UnreadableSigned,
};

// Judges by PEM's first label (RFC 7468) or the outermost parts of DER. What is of a kind may
// still be damaged, but for certificates and lists in DER, which the library could read.
[[nodiscard]] FileKind FileKindOf(std::span<const std::uint8_t> bytes);

// With its article, as in "a certificate in PEM form".
[[nodiscard]] const char* FileKindText(FileKind kind);

// Whether it is a private key, of whatever form.
[[nodiscard]] bool IsPrivateKey(FileKind kind);

// Whether it is a certificate, of whatever form.
[[nodiscard]] bool IsCertificate(FileKind kind);

}  // namespace sealkeeper

#endif
