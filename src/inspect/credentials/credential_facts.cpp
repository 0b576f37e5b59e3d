#include "inspect/credentials/credential_facts.h"

#include <mbedtls/platform_util.h>

#include <vector>

#include "inspect/credentials/signature_check.h"
#include "platform/file_io.h"
#include "runtime/certificate_trust.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/mbedtls_result.h"
#include "runtime/signing_material.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;

// As `ParseCertificate`, for the first certificate in a PEM file. Further ones, such as the
// issuer's, are ignored: converting the file to DER keeps only the first.
int ParsePemCertificate(Bytes bytes, Certificate& certificate) {
    // The library requires a terminating zero after PEM.
    bytes.push_back(0);
    Certificate all;
    const int result = mbedtls_x509_crt_parse(all.Get(), bytes.data(), bytes.size());
    const mbedtls_x509_buf& first = all.Get()->raw;
    // A positive result is the number of certificates that could not be parsed.
    return first.p != nullptr ? ParseCertificate({first.p, first.len}, certificate) : result;
}

// The name to check the certificate for.
std::string ExpectedName(const std::optional<std::string>& productId,
                         const CertificateDetails& details) {
    if (productId) {
        return *productId;
    }
    const std::vector<std::string>& names = ComparedNames(details);
    return names.empty() ? std::string() : names.front();
}

void DescribeCertificate(const TrustMaterial& trust, const std::optional<std::string>& productId,
                         Certificate& certificate, CertificateFacts& facts) {
    mbedtls_x509_crt& parsed = *certificate.Get();
    facts.details = DetailsOfCertificate(parsed);
    facts.isSelfSigned =
        IsSameEncoding(parsed.issuer_raw, parsed.subject_raw) &&
        IsSignedBy(parsed.pk, {parsed.raw, parsed.tbs, parsed.sig_oid}).value_or(true);
    facts.namesAuthority = !IsFromAnotherIssuer(trust, certificate);
    facts.check = CheckChain(trust, ExpectedName(productId, *facts.details), certificate);
}

// Leaves the parsed certificate, from DER or PEM, in `certificate`.
CertificateFacts GatherCertificate(const CredentialFiles& files, const TrustMaterial& trust,
                                   Certificate& certificate) {
    CertificateFacts facts;
    facts.file = ExamineFile(files.certificate);
    const auto bytes = ReadCertificateBytes(files.certificate);
    if (!bytes) {
        facts.code = ResultCode::CertIOError;
        MarkUnread(facts.file);
        return facts;
    }
    facts.file.kind = FileKindOf(*bytes);
    const int error = *facts.file.kind == FileKind::PemCertificate
                          ? ParsePemCertificate(*bytes, certificate)
                          : ParseCertificate(*bytes, certificate);
    if (error == 0) {
        DescribeCertificate(trust, files.productId, certificate, facts);
    }
    const std::string name =
        facts.details ? ExpectedName(files.productId, *facts.details) : std::string();
    Certificate checked;
    facts.code = VerifySigningCertificate(trust, name, *bytes, {}, {}, checked);
    return facts;
}

// Tells what a file is that was refused as a key. Wipes its bytes, which may be a damaged key.
void ExamineRefusedKey(ExaminedFile& file) {
    constexpr std::uint64_t kMostBytes = 1'048'576;
    auto start = ReadFileStart(file.path, kMostBytes);
    if (!start) {
        MarkUnread(file);
        return;
    }
    file.kind = FileKindOf(start->bytes);
    mbedtls_platform_zeroize(start->bytes.data(), start->bytes.size());
}

KeyFacts GatherKey(const std::string& path, const Certificate& certificate) {
    KeyFacts facts;
    facts.file = ExamineFile(path);
    PrivateKey key;
    facts.code = ReadPrivateKey(path, key);
    if (facts.code != ResultCode::Ok) {
        ExamineRefusedKey(facts.file);
        return facts;
    }
    facts.details = DetailsOfKey(*key.Get());
    if (certificate.Get()->raw.p != nullptr) {
        facts.pairCode = MapX509Error(CheckKeyPair(&certificate.Get()->pk, key.Get()));
    }
    return facts;
}

bool Revokes(const mbedtls_x509_crl& list, const mbedtls_x509_crt& certificate) {
    return IsSameEncoding(list.issuer_raw, certificate.issuer_raw) &&
           FindRevoked(list, certificate) != nullptr;
}

GivenListFacts GatherList(const std::string& path, const TrustMaterial& trust,
                          Certificate& certificate) {
    GivenListFacts facts;
    facts.file = ExamineFile(path);
    const auto bytes = ReadWholeFile(path);
    if (!bytes) {
        facts.code = ResultCode::CertIOError;
        MarkUnread(facts.file);
        return facts;
    }
    facts.file.kind = FileKindOf(*bytes);
    RevocationList list;
    if (ParseRevocationList(*bytes, list) != 0) {
        return facts;
    }
    facts.list = DetailsOfList(*list.Get());
    if (certificate.Get()->raw.p != nullptr) {
        facts.issuer = IssuerOfList(list, certificate, trust);
        const bool isForged = facts.issuer->isSigned == false;
        facts.revokesCertificate = !isForged && Revokes(*list.Get(), *certificate.Get());
    }
    return facts;
}

}  // namespace

CredentialFacts GatherCredentialFacts(const CredentialFiles& files, const TrustMaterial& trust) {
    Certificate certificate;
    CredentialFacts facts;
    facts.productId = files.productId;
    facts.trust = GatherTrustFacts(trust);
    facts.certificate = GatherCertificate(files, trust, certificate);
    if (files.key) {
        facts.key = GatherKey(*files.key, certificate);
    }
    // Generate, too, ignores an empty path.
    if (files.revocationList && !files.revocationList->empty()) {
        facts.revocationList = GatherList(*files.revocationList, trust, certificate);
    }
    return facts;
}

bool AreSwapped(const CredentialFacts& facts) {
    return facts.key && facts.key->file.kind && facts.certificate.file.kind &&
           IsCertificate(*facts.key->file.kind) && IsPrivateKey(*facts.certificate.file.kind);
}

ResultCode GenerateCode(const CredentialFacts& facts) {
    constexpr ResultCode kGood = ResultCode::Ok;
    if (facts.revocationList && facts.revocationList->code != kGood) {
        return facts.revocationList->code;
    }
    if (facts.certificate.code == ResultCode::CertIOError) {
        return facts.certificate.code;
    }
    if (facts.key && facts.key->code != kGood) {
        return facts.key->code;
    }
    if (facts.certificate.code != kGood) {
        return facts.certificate.code;
    }
    return facts.key ? facts.key->pairCode.value_or(kGood) : kGood;
}

}  // namespace sealkeeper
