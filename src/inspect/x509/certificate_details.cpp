#include "inspect/x509/certificate_details.h"

#include <mbedtls/oid.h>

#include <algorithm>
#include <cstring>

namespace sealkeeper {
namespace {

// Calls `write` with ever larger buffers until the library's text fits.
template <typename Write>
std::string TextOf(Write write) {
    constexpr std::size_t kFirstBytes = 1024;
    // More than the names in a certificate of one mebibyte take.
    constexpr std::size_t kMostBytes = std::size_t{8} << 20U;
    for (std::size_t bytes = kFirstBytes; bytes <= kMostBytes; bytes *= 2) {
        std::string text(bytes, '\0');
        if (const int length = write(text.data(), text.size()); length >= 0) {
            text.resize(static_cast<std::size_t>(length));
            return text;
        }
    }
    return "(not known)";
}

std::string NameText(const mbedtls_x509_name& name) {
    return TextOf(
        [&](char* text, std::size_t bytes) { return mbedtls_x509_dn_gets(text, bytes, &name); });
}

// As openssl prints it, without the library's colons.
std::string SerialText(const mbedtls_x509_buf& serial) {
    std::string text = TextOf([&](char* written, std::size_t bytes) {
        return mbedtls_x509_serial_gets(written, bytes, &serial);
    });
    text.erase(std::remove(text.begin(), text.end(), ':'), text.end());
    return text;
}

std::string SignatureText(const mbedtls_x509_buf& algorithm) {
    const char* text = nullptr;
    return mbedtls_oid_get_sig_alg_desc(&algorithm, &text) == 0 ? text : "(not known)";
}

std::string StringOf(const mbedtls_x509_buf& buffer) {
    return {reinterpret_cast<const char*>(buffer.p), buffer.len};
}

std::vector<std::string> CommonNames(const mbedtls_x509_name& subject) {
    std::vector<std::string> names;
    for (const mbedtls_x509_name* part = &subject; part != nullptr; part = part->next) {
        if (part->oid.p != nullptr && MBEDTLS_OID_CMP(MBEDTLS_OID_AT_CN, &part->oid) == 0) {
            names.push_back(StringOf(part->val));
        }
    }
    return names;
}

std::vector<std::string> DnsNames(const mbedtls_x509_sequence& alternatives) {
    std::vector<std::string> names;
    for (const mbedtls_x509_sequence* name = &alternatives; name != nullptr; name = name->next) {
        const int kind = name->buf.tag & MBEDTLS_ASN1_TAG_VALUE_MASK;
        if (name->buf.p != nullptr && kind == MBEDTLS_X509_SAN_DNS_NAME) {
            names.push_back(StringOf(name->buf));
        }
    }
    return names;
}

// The library keeps an empty list as one entry without a serial number.
bool IsEntry(const mbedtls_x509_crl_entry& entry) {
    return entry.serial.len != 0;
}

}  // namespace

KeyDetails DetailsOfKey(const mbedtls_pk_context& key) {
    return {mbedtls_pk_get_name(&key), mbedtls_pk_get_type(&key) == MBEDTLS_PK_RSA,
            mbedtls_pk_get_bitlen(&key)};
}

CertificateDetails DetailsOfCertificate(const mbedtls_x509_crt& certificate) {
    CertificateDetails details;
    details.subject = NameText(certificate.subject);
    details.issuer = NameText(certificate.issuer);
    details.commonNames = CommonNames(certificate.subject);
    details.dnsNames = DnsNames(certificate.subject_alt_names);
    details.hasAlternativeNames = certificate.subject_alt_names.buf.p != nullptr;
    details.serial = SerialText(certificate.serial);
    details.notBefore = UtcTimeOf(certificate.valid_from).value_or(UtcTime());
    details.notAfter = UtcTimeOf(certificate.valid_to).value_or(UtcTime());
    details.key = DetailsOfKey(certificate.pk);
    details.signature = SignatureText(certificate.sig_oid);
    return details;
}

ListDetails DetailsOfList(const mbedtls_x509_crl& list) {
    ListDetails details;
    details.issuer = NameText(list.issuer);
    details.signature = SignatureText(list.sig_oid);
    details.thisUpdate = UtcTimeOf(list.this_update).value_or(UtcTime());
    details.nextUpdate = UtcTimeOf(list.next_update);
    for (const mbedtls_x509_crl_entry* entry = &list.entry; entry != nullptr && IsEntry(*entry);
         entry = entry->next) {
        details.revoked.push_back({SerialText(entry->serial), UtcTimeOf(entry->revocation_date)});
    }
    return details;
}

const std::vector<std::string>& ComparedNames(const CertificateDetails& certificate) {
    return certificate.hasAlternativeNames ? certificate.dnsNames : certificate.commonNames;
}

bool IsSameEncoding(const mbedtls_x509_buf& left, const mbedtls_x509_buf& right) {
    return std::equal(left.p, left.p + left.len, right.p, right.p + right.len);
}

const mbedtls_x509_crl_entry* FindRevoked(const mbedtls_x509_crl& list,
                                          const mbedtls_x509_crt& certificate) {
    const mbedtls_x509_crl_entry* entry = &list.entry;
    while (entry != nullptr &&
           !(IsEntry(*entry) && IsSameEncoding(entry->serial, certificate.serial))) {
        entry = entry->next;
    }
    return entry;
}

}  // namespace sealkeeper
