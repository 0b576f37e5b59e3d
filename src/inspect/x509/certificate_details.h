// What a certificate and a revocation list say of themselves, as text and numbers.
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
    // As one line, "O=Maker, CN=Game". The library writes "?" for what is not ASCII, so that two
    // names may look the same.
    std::string subject;
    std::string issuer;
    // The common names of the subject, as they stand there.
    std::vector<std::string> commonNames;
    // The DNS names of the extension subjectAltName.
    std::vector<std::string> dnsNames;
    // Whether there is such an extension. The library compares no common name then.
    bool hasAlternativeNames = false;
    // Hexadecimal, upper case; "...." stands for the end of one of more than 32 bytes.
    std::string serial;
    UtcTime notBefore;
    UtcTime notAfter;
    KeyDetails key;
    // "RSA with SHA-256".
    std::string signature;
};

struct RevokedSerial {
    // As of a certificate.
    std::string serial;
    std::optional<UtcTime> revokedOn;
};

struct ListDetails {
    std::string issuer;
    std::string signature;
    UtcTime thisUpdate;
    // Nothing where the list names none. The library takes such a list for an expired one.
    std::optional<UtcTime> nextUpdate;
    std::vector<RevokedSerial> revoked;
};

[[nodiscard]] KeyDetails DetailsOfKey(const mbedtls_pk_context& key);
[[nodiscard]] CertificateDetails DetailsOfCertificate(const mbedtls_x509_crt& certificate);
[[nodiscard]] ListDetails DetailsOfList(const mbedtls_x509_crl& list);

// The names that the library compares with a product id: the DNS names if the certificate has
// alternative names, else its common names.
[[nodiscard]] const std::vector<std::string>& ComparedNames(const CertificateDetails& certificate);

// Whether two parts of encoded structures, such as names, are the same.
[[nodiscard]] bool IsSameEncoding(const mbedtls_x509_buf& left, const mbedtls_x509_buf& right);

// The entry of `list` with the serial number of `certificate`, whoever issued the two; null where
// there is none. The encoded numbers are compared, for the text of a long one is cut.
[[nodiscard]] const mbedtls_x509_crl_entry* FindRevoked(const mbedtls_x509_crl& list,
                                                        const mbedtls_x509_crt& certificate);

}  // namespace sealkeeper

#endif
