#include "inspect/x509/file_kind.h"

#include <mbedtls/asn1.h>

#include <array>
#include <optional>
#include <string_view>

#include "runtime/certificate_trust.h"

namespace sealkeeper {
namespace {

constexpr int kSequence = MBEDTLS_ASN1_CONSTRUCTED | MBEDTLS_ASN1_SEQUENCE;

std::string_view TextOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

FileKind KindOfPemLabel(std::string_view label, std::string_view text) {
    constexpr std::string_view kPrivateKey = "PRIVATE KEY";
    if (label == "CERTIFICATE" || label == "X509 CERTIFICATE" || label == "TRUSTED CERTIFICATE") {
        return FileKind::PemCertificate;
    }
    if (label == "X509 CRL") {
        return FileKind::PemRevocationList;
    }
    if (label == "CERTIFICATE REQUEST" || label == "NEW CERTIFICATE REQUEST") {
        return FileKind::PemCertificateRequest;
    }
    if (label == "PKCS7" || label == "CMS") {
        return FileKind::PemPkcs7;
    }
    if (label == "OPENSSH PRIVATE KEY") {
        return FileKind::OpenSshKey;
    }
    if (label == "PUBLIC KEY" || label == "RSA PUBLIC KEY" || label == "SSH2 PUBLIC KEY") {
        return FileKind::PublicKey;
    }
    if (label == "ENCRYPTED PRIVATE KEY") {
        return FileKind::PemEncryptedKey;
    }
    if (label.size() >= kPrivateKey.size() &&
        label.substr(label.size() - kPrivateKey.size()) == kPrivateKey) {
        // RFC 1421, 4.6.1.1.
        return text.find("Proc-Type: 4,ENCRYPTED") == std::string_view::npos
                   ? FileKind::PemPrivateKey
                   : FileKind::PemEncryptedKey;
    }
    return FileKind::Unknown;
}

FileKind KindOfText(std::string_view text) {
    constexpr std::string_view kBegin = "-----BEGIN ";
    const std::size_t begin = text.find(kBegin);
    if (begin == std::string_view::npos) {
        const bool isOfOpenSsh = text.starts_with("ssh-") || text.starts_with("ecdsa-");
        return isOfOpenSsh ? FileKind::PublicKey : FileKind::Unknown;
    }
    text.remove_prefix(begin + kBegin.size());
    const std::size_t end = text.find("-----");
    return end == std::string_view::npos ? FileKind::Unknown
                                         : KindOfPemLabel(text.substr(0, end), text);
}

bool HasUtf16Mark(std::string_view text) {
    return text.substr(0, 2) == "\xff\xfe" || text.substr(0, 2) == "\xfe\xff";
}

bool IsDerCertificate(std::span<const std::uint8_t> bytes) {
    Certificate certificate;
    return ParseCertificate(bytes, certificate) == 0;
}

bool IsDerRevocationList(std::span<const std::uint8_t> bytes) {
    RevocationList list;
    return ParseRevocationList(bytes, list) == 0;
}

// Reads consecutive DER elements.
class DerCursor {
  public:
    explicit DerCursor(std::span<const std::uint8_t> bytes)
        // The library takes non-const pointers, but only reads.
        : position_(const_cast<unsigned char*>(bytes.data())), end_(position_ + bytes.size()) {}

    // Moves past the header of an element of type `tag` and returns the length of its content.
    // Empty if there is no such element; then it does not move.
    std::optional<std::size_t> Enter(int tag) {
        unsigned char* next = position_;
        std::size_t length = 0;
        if (mbedtls_asn1_get_tag(&next, end_, &length, tag) != 0) {
            return std::nullopt;
        }
        position_ = next;
        return length;
    }

    // Moves past an element of type `tag`. False if there is none.
    bool Skip(int tag) {
        const auto length = Enter(tag);
        if (length) {
            position_ += *length;
        }
        return length.has_value();
    }

    [[nodiscard]] unsigned char FirstByte() const { return position_ == end_ ? 0 : *position_; }

  private:
    unsigned char* position_;
    unsigned char* end_;
};

// Private keys and PKCS#12 begin with a version number (RFC 5208, 5; RFC 5915, 3; RFC 7292, 4; RFC
// 8017, A.1.2). A bare RSA public key begins with its modulus (A.1.1).
FileKind KindOfSequenceWithNumber(DerCursor cursor) {
    constexpr unsigned kPkcs12Version = 3;
    if (cursor.Enter(MBEDTLS_ASN1_INTEGER) != std::size_t{1}) {
        return FileKind::PublicKey;
    }
    return cursor.FirstByte() == kPkcs12Version ? FileKind::Pkcs12 : FileKind::DerPrivateKey;
}

// Either an algorithm and a key, or a signed structure. An encrypted private key is an octet string
// (RFC 5208, 6), a public key a bit string (RFC 5280, 4.1). In a certificate request the version
// number is followed by a name (RFC 2986, 4.1). All else is a certificate or list that the library
// could not read.
FileKind KindOfSequenceWithSequence(DerCursor cursor) {
    DerCursor inner = cursor;
    if (inner.Enter(kSequence) && inner.Skip(MBEDTLS_ASN1_INTEGER) && inner.Enter(kSequence) &&
        inner.FirstByte() != MBEDTLS_ASN1_OID) {
        return FileKind::DerCertificateRequest;
    }
    cursor.Skip(kSequence);
    if (cursor.Skip(MBEDTLS_ASN1_OCTET_STRING)) {
        return FileKind::DerEncryptedKey;
    }
    if (cursor.Skip(MBEDTLS_ASN1_BIT_STRING)) {
        return FileKind::PublicKey;
    }
    const bool isSigned = cursor.Skip(kSequence) && cursor.Skip(MBEDTLS_ASN1_BIT_STRING);
    return isSigned ? FileKind::UnreadableSigned : FileKind::Unknown;
}

FileKind KindOfDer(std::span<const std::uint8_t> bytes) {
    if (IsDerCertificate(bytes)) {
        return FileKind::DerCertificate;
    }
    if (IsDerRevocationList(bytes)) {
        return FileKind::DerRevocationList;
    }
    DerCursor cursor(bytes);
    if (!cursor.Enter(kSequence)) {
        return FileKind::CutOffDer;
    }
    switch (cursor.FirstByte()) {
        case MBEDTLS_ASN1_INTEGER:
            return KindOfSequenceWithNumber(cursor);
        case MBEDTLS_ASN1_OID:
            return FileKind::DerPkcs7;
        case kSequence:
            return KindOfSequenceWithSequence(cursor);
        default:
            return FileKind::Unknown;
    }
}

struct KindText {
    FileKind kind;
    const char* text;
};

// In the order of the enumerators.
constexpr std::array kTexts = {
    KindText{FileKind::Unknown, "neither a certificate nor a key nor a revocation list"},
    KindText{FileKind::Empty, "an empty file"},
    KindText{FileKind::Utf16Text, "text in UTF-16"},
    KindText{FileKind::DerCertificate, "a certificate in DER form"},
    KindText{FileKind::PemCertificate, "a certificate in PEM form"},
    KindText{FileKind::DerRevocationList, "a revocation list in DER form"},
    KindText{FileKind::PemRevocationList, "a revocation list in PEM form"},
    KindText{FileKind::DerPrivateKey, "a private key in DER form"},
    KindText{FileKind::PemPrivateKey, "a private key in PEM form"},
    KindText{FileKind::DerEncryptedKey, "a private key with a password, in DER form"},
    KindText{FileKind::PemEncryptedKey, "a private key with a password, in PEM form"},
    KindText{FileKind::OpenSshKey, "a private key of OpenSSH"},
    KindText{FileKind::PublicKey, "a public key"},
    KindText{FileKind::DerCertificateRequest, "a request for a certificate, in DER form"},
    KindText{FileKind::PemCertificateRequest, "a request for a certificate, in PEM form"},
    KindText{FileKind::DerPkcs7, "a PKCS#7 collection of certificates, in DER form"},
    KindText{FileKind::PemPkcs7, "a PKCS#7 collection of certificates, in PEM form"},
    KindText{FileKind::Pkcs12, "a PKCS#12 file (.p12, .pfx)"},
    KindText{FileKind::CutOffDer, "the beginning of a DER file, of which the rest is missing"},
    KindText{
        FileKind::UnreadableSigned,
        "a certificate or revocation list in DER form that the library cannot read: it is damaged, or has a key or an extension of a kind that is not known"},
};

constexpr bool HasEveryKind() {
    for (std::size_t index = 0; index < kTexts.size(); ++index) {
        if (kTexts[index].kind != static_cast<FileKind>(index)) {
            return false;
        }
    }
    return kTexts.back().kind == FileKind::UnreadableSigned;
}

static_assert(HasEveryKind());

}  // namespace

FileKind FileKindOf(std::span<const std::uint8_t> bytes) {
    if (bytes.empty()) {
        return FileKind::Empty;
    }
    const FileKind der = bytes.front() == kSequence ? KindOfDer(bytes) : FileKind::Unknown;
    if (der != FileKind::Unknown && der != FileKind::CutOffDer) {
        return der;
    }
    // The library finds a PEM label anywhere, so a PEM file may begin with '0', the tag of a DER
    // sequence, or with the mark of UTF-16.
    const std::string_view text = TextOf(bytes);
    const FileKind kind = KindOfText(text);
    if (kind != FileKind::Unknown) {
        return kind;
    }
    return HasUtf16Mark(text) ? FileKind::Utf16Text : der;
}

const char* FileKindText(FileKind kind) {
    return kTexts[static_cast<std::size_t>(kind)].text;
}

bool IsPrivateKey(FileKind kind) {
    return kind == FileKind::DerPrivateKey || kind == FileKind::PemPrivateKey ||
           kind == FileKind::DerEncryptedKey || kind == FileKind::PemEncryptedKey ||
           kind == FileKind::OpenSshKey;
}

bool IsCertificate(FileKind kind) {
    return kind == FileKind::DerCertificate || kind == FileKind::PemCertificate;
}

}  // namespace sealkeeper
