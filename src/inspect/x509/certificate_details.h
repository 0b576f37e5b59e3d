// The fields of certificates and revocation lists as text and numbers.
#ifndef SEALKEEPER_INSPECT_X509_CERTIFICATE_DETAILS_H
#define SEALKEEPER_INSPECT_X509_CERTIFICATE_DETAILS_H

#include <mbedtls/pk.h>
#include <mbedtls/x509_crl.h>
#include <mbedtls/x509_crt.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "inspect/x509/utc_time.h"

namespace sealkeeper {

struct KeyDetails {
    // "RSA", "EC".
    std::string type;
    bool isRsa = false;
    std::size_t bits = 0;
};

struct CertificateDetails {
    // On one line: "O=Maker, CN=Game". The library writes "?" for characters outside ASCII, so
    // different names may look the same.
    std::string subject;
    std::string issuer;
    // The common names of the subject, as stored.
    std::vector<std::string> commonNames;
    // The DNS names of the subjectAltName extension.
    std::vector<std::string> dnsNames;
    // Whether the extension is present. The library then ignores the common name.
    bool hasAlternativeNames = false;
    // Upper-case hexadecimal. After 32 bytes it is cut, and ends in "....".
    std::string serial;
    UtcTime notBefore;
    UtcTime notAfter;
    KeyDetails key;
    // "RSA with SHA-256".
    std::string signature;
};

struct RevokedSerial {
    // As in a certificate.
    std::string serial;
    std::optional<UtcTime> revokedOn;
};

struct ListDetails {
    std::string issuer;
    std::string signature;
    UtcTime thisUpdate;
    // Empty if the list has none. The library treats such a list as expired.
    std::optional<UtcTime> nextUpdate;
    std::vector<RevokedSerial> revoked;
};

[[nodiscard]] KeyDetails DetailsOfKey(const mbedtls_pk_context& key);
[[nodiscard]] CertificateDetails DetailsOfCertificate(const mbedtls_x509_crt& certificate);
[[nodiscard]] ListDetails DetailsOfList(const mbedtls_x509_crl& list);

// The names that the library compares with a product id: the DNS names if there is a subjectAltName
// extension, else the common names.
[[nodiscard]] const std::vector<std::string>& ComparedNames(const CertificateDetails& certificate);

// Whether two encoded fields, such as names, are identical.
[[nodiscard]] bool IsSameEncoding(const mbedtls_x509_buf& left, const mbedtls_x509_buf& right);

// The entry of `list` with the serial number of `certificate`; null if there is none. Issuers are
// not compared. The encoded numbers are, since the text of a long one is cut.
[[nodiscard]] const mbedtls_x509_crl_entry* FindRevoked(const mbedtls_x509_crl& list,
                                                        const mbedtls_x509_crt& certificate);

}  // namespace sealkeeper

#endif
