#include "inspect/show/signature_facts.h"

#include <cerrno>
#include <cstddef>
#include <span>

#include "app/command_line_options.h"
#include "app/result_code.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_signature.h"
#include "catalogue/certificate_path.h"
#include "inspect/report/code_text.h"
#include "inspect/report/number_text.h"
#include "inspect/report/unread_reason.h"
#include "inspect/x509/certificate_refusal.h"
#include "platform/little_endian.h"
#include "runtime/certificate_trust.h"
#include "runtime/runtime_configuration_format.h"
#include "runtime/runtime_configuration_reader.h"
#include "runtime/scramble.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

std::size_t NameStart(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? 0 : slash + 1;
}

// The name may have no dot at all. A dot in the directory must not be taken for it.
std::string CertificateOfCatalogue(const std::string& path) {
    const std::string name = path.substr(NameStart(path));
    return path.substr(0, NameStart(path)) +
           CertificatePathOf(name).value_or(name + kCertificateExtension);
}

std::string CertificateOfRuntimeConfiguration(const std::string& path) {
    return path.substr(0, NameStart(path)) + kMainCatalogueName + kCertificateExtension;
}

std::string TrustRefusal(ResultCode code, Certificate& certificate) {
    if (code == ResultCode::MbedTlsX509VerifyFailed &&
        IsFromAnotherIssuer(BuiltInTrustMaterial(), certificate)) {
        return "the certificate was issued by a certificate other than the built-in authority, as a mod's is";
    }
    const std::string refusal = CertificateRefusal(code, "the certificate");
    return refusal.empty() ? "the certificate is not good: " + CodeText(code) : refusal;
}

SignerTrust TrustOf(ByteView certificateBytes, Certificate& certificate,
                    const std::string& productId) {
    Certificate verified;
    const ResultCode code = VerifySigningCertificate(BuiltInTrustMaterial(), productId,
                                                     certificateBytes, {}, {}, verified);
    SignerTrust facts{productId, code == ResultCode::Ok, {}};
    if (!facts.isTrusted) {
        facts.reason = TrustRefusal(code, certificate);
    }
    return facts;
}

// Why a signature with the stored length `lengthBytes` is not from the certificate's key.
std::string WhyBad(std::uint32_t lengthBytes, Certificate& certificate) {
    constexpr std::size_t kByteBits = 8;
    const mbedtls_pk_context& key = certificate.Get()->pk;
    const std::size_t keyBytes = mbedtls_pk_get_len(&key);
    if (lengthBytes == 0) {
        return "the file holds no signature";
    }
    if (lengthBytes > signed_file::kSignatureAreaBytes) {
        return "its length, " + GroupedNumber(lengthBytes) + ", is more than its area has";
    }
    if (mbedtls_pk_can_do(&key, MBEDTLS_PK_RSA) == 0) {
        return "the certificate's key is no RSA key";
    }
    if (lengthBytes != keyBytes) {
        return "it was made with a key of " + std::to_string(lengthBytes * kByteBits) +
               " bits, and the certificate's has " + std::to_string(keyBytes * kByteBits);
    }
    return "the file was changed after it was signed, or was signed with another key than the certificate's";
}

// Reads the certificate. If there is one, calls `verify` to check the signature, whose stored
// length is `lengthBytes`, with its key.
template <typename Verify>
SignatureFacts CheckWith(const std::string& certificatePath, std::uint32_t lengthBytes,
                         const std::optional<std::string>& productId, Verify verify) {
    SignatureFacts facts;
    facts.certificatePath = certificatePath;
    errno = 0;
    const auto bytes = ReadCertificateBytes(certificatePath);
    if (!bytes) {
        facts.state = SignatureState::CertificateMissing;
        facts.reason = UnreadReason(certificatePath, errno);
        return facts;
    }
    Certificate certificate;
    if (ParseCertificate(*bytes, certificate) != 0) {
        facts.state = SignatureState::CertificateUnusable;
        facts.reason = "it is no certificate in DER";
        return facts;
    }
    const bool isGood = verify(certificate);
    facts.state = isGood ? SignatureState::Good : SignatureState::Bad;
    if (!isGood) {
        facts.reason = WhyBad(lengthBytes, certificate);
    }
    if (productId) {
        facts.trust = TrustOf(*bytes, certificate, *productId);
    }
    return facts;
}

}  // namespace

SignatureFacts CheckCatalogueSignature(const std::string& path, CatalogueFile& file,
                                       const std::optional<std::string>& productId) {
    const auto length = LoadLittleEndian<std::uint32_t>(
        std::span(file.bytes).subspan(catalogue_header::kSignatureLengthOffset));
    return CheckWith(
        CertificateOfCatalogue(path), length, productId, [&file](Certificate& certificate) {
            return VerifyCatalogueSignature(&certificate.Get()->pk, file.bytes) == ResultCode::Ok;
        });
}

SignatureFacts CheckRuntimeSignature(const std::string& path, std::vector<std::uint8_t> stored,
                                     const std::optional<std::string>& productId) {
    std::vector<std::uint8_t> plain = stored;
    Unscramble(plain);
    const auto length = LoadLittleEndian<std::uint32_t>(
        std::span(plain).subspan(runtime_file::kSignatureLengthOffset));
    return CheckWith(CertificateOfRuntimeConfiguration(path), length, productId,
                     [&stored](Certificate& certificate) {
                         return ValidateRuntimeConfiguration(stored, certificate);
                     });
}

}  // namespace sealkeeper
