#include "inspect/credentials/name_findings.h"

#include <mbedtls/x509.h>

#include <algorithm>
#include <vector>

#include "inspect/credentials/name_difference.h"
#include "inspect/report/name_list.h"

namespace sealkeeper {
namespace {

// The difference between `productId` and the name closest to it.
NameDifference LeastDifference(const std::vector<std::string>& names,
                               const std::string& productId) {
    NameDifference least = NameDifference::Other;
    for (const std::string& name : names) {
        least = std::min(least, DifferenceOf(name, productId));
    }
    return least;
}

const char* DifferenceText(NameDifference difference) {
    switch (difference) {
        case NameDifference::WhiteSpace:
            return " They differ in white space (letter case does not matter).";
        case NameDifference::OutsideAscii:
            return " They differ in characters outside ASCII, of which the bytes are compared: their letter case counts, and whether an accent is part of its letter.";
        case NameDifference::None:
        case NameDifference::LetterCase:
        case NameDifference::Other:
            return " They differ in more than white space and letter case.";
    }
    return "";
}

bool HasCommonName(const CertificateDetails& certificate, const std::string& productId) {
    return LeastDifference(certificate.commonNames, productId) <= NameDifference::LetterCase;
}

}  // namespace

CredentialFinding JudgeMismatch(const CertificateDetails& certificate,
                                const std::optional<std::string>& productId) {
    constexpr const char* kName = "wrong-product";
    const ResultCode code = CodeOfFlag(MBEDTLS_X509_BADCERT_CN_MISMATCH);
    const std::vector<std::string>& names = ComparedNames(certificate);
    if (certificate.hasAlternativeNames && productId && HasCommonName(certificate, *productId)) {
        return MakeError(
            kName, code,
            "The certificate has the product id '" + *productId +
                "' as its common name, but alternative names too (" +
                (names.empty() ? "no DNS names" : "DNS names " + QuotedNameList(names)) +
                "), and the cryptographic library compares DNS names in its place.",
            {"Have a certificate issued without alternative names, or with the product id among them as a DNS name."});
    }
    if (names.empty() || !productId) {
        return MakeError(
            kName, code, "The certificate has no name that a product id could be.",
            {"Have a certificate issued with the product id as its common name, and without alternative names."});
    }
    return MakeError(
        kName, code,
        "The certificate is for " + QuotedNameList(names) + ", --product says '" + *productId +
            "'." + DifferenceText(LeastDifference(names, *productId)),
        {"Give the product id as the certificate has it (-productid of sealkeeper), or have a certificate issued for '" +
         *productId + "'."});
}

}  // namespace sealkeeper
