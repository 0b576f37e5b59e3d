// Tells what a file is that should be a certificate, a key or a revocation list.
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
    // Protected by a password.
    DerEncryptedKey,
    PemEncryptedKey,
    OpenSshKey,
    PublicKey,
    DerCertificateRequest,
    PemCertificateRequest,
    // Several certificates in one file.
    DerPkcs7,
    PemPkcs7,
    // A key with its certificates, as a rule protected by a password.
    Pkcs12,
    // DER whose outermost length reaches past the end of the file.
    CutOffDer,
    // A certificate or list with a field that the library cannot read.
    UnreadableSigned,
};

// Judges by the outermost DER elements or the first PEM label (RFC 7468); a label goes before DER
// that is cut off. A file of any kind may still be damaged, except for DER certificates and lists:
// those the library has parsed.
[[nodiscard]] FileKind FileKindOf(std::span<const std::uint8_t> bytes);

// With an article: "a certificate in PEM form".
[[nodiscard]] const char* FileKindText(FileKind kind);

// Whether it is a private key in any form.
[[nodiscard]] bool IsPrivateKey(FileKind kind);

// Whether it is a certificate in any form.
[[nodiscard]] bool IsCertificate(FileKind kind);

}  // namespace sealkeeper

#endif
