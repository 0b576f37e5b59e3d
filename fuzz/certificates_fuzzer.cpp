// Feeds any bytes as one of the inputs of a certificate check; the first byte says which. Whatever
// they are, nothing may be trusted unless an authority signed exactly those bytes.
#include <algorithm>
#include <array>
#include <cctype>
#include <string>

#include "app/console_log.h"
#include "fuzzer.h"
#include "runtime/certificate_trust.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_result.h"
#include "runtime/signing_material.h"
#include "runtime/trust_material.h"
#include "scratch_directory.h"
#include "signed_der.h"

namespace {

using namespace sealkeeper;
using fuzz::Bytes;
using fuzz::ByteView;
using fuzz::IsSignedBy;
using fuzz::Require;

constexpr ByteView kNone;
const std::string kProductId = "FuzzedGame";

Bytes Credential(const std::string& name) {
    return fuzz::ContentOf(std::string(SEALKEEPER_FUZZ_CREDENTIALS_DIR) + "/" + name);
}

ResultCode Check(const TrustMaterial& trust, ByteView certificateBytes, ByteView parentBytes) {
    Certificate certificate;
    const ResultCode code = VerifySigningCertificate(trust, kProductId, certificateBytes,
                                                     parentBytes, kNone, certificate);
    Require((code == ResultCode::Ok) == (certificate.Get()->raw.p != nullptr));
    return code;
}

bool IsTrusted(ByteView certificateBytes, ByteView parentBytes = kNone) {
    return Check(BuiltInTrustMaterial(), certificateBytes, parentBytes) == ResultCode::Ok;
}

// Credentials that the authority or the game really issued.
struct Genuine {
    Bytes game = Credential("game.cer");
    Bytes revoked = Credential("revoked.cer");
    // Issued by the game.
    Bytes mod = Credential("mod.cer");
    Certificate authority;
    Certificate parsedGame;

    Genuine() {
        Require(ParseCertificate(BuiltInTrustMaterial().authorityDer, authority) == 0);
        Require(ParseCertificate(game, parsedGame) == 0);
        // Otherwise the checks below could not fail: nothing, or everything, would be trusted.
        Require(IsTrusted(game) && IsTrusted(mod, game));
        Require(!IsTrusted(revoked) && !IsTrusted(mod));
    }
};

const Genuine& GenuineCredentials() {
    static const Genuine genuine;
    return genuine;
}

bool IsSignedByAuthority(ByteView bytes) {
    return IsSignedBy(bytes, GenuineCredentials().authority.Get()->pk);
}

void CheckCertificate(ByteView bytes) {
    const bool isTrusted = IsTrusted(bytes);
    Require(!isTrusted || IsSignedByAuthority(bytes));
    // Checking a certificate that was parsed before gives the same result.
    Certificate parsed;
    Require(ParseCertificate(bytes, parsed) == 0
                ? CheckCertificateTrust(BuiltInTrustMaterial(), parsed, kProductId) == isTrusted
                : !isTrusted);
}

void CheckModCertificate(ByteView bytes) {
    const Genuine& genuine = GenuineCredentials();
    Require(!IsTrusted(bytes, genuine.game) || IsSignedByAuthority(bytes) ||
            IsSignedBy(bytes, genuine.parsedGame.Get()->pk));
}

void CheckParentCertificate(ByteView bytes) {
    Require(!IsTrusted(GenuineCredentials().mod, bytes) || IsSignedByAuthority(bytes));
}

// A revoked certificate is trusted only without a list or, in this library, with a list of another
// issuer.
void CheckRevocationList(ByteView bytes) {
    const Genuine& genuine = GenuineCredentials();
    const TrustMaterial trust{BuiltInTrustMaterial().authorityDer, bytes};
    if (Check(trust, genuine.revoked, kNone) != ResultCode::Ok || bytes.empty()) {
        return;
    }
    RevocationList list;
    Require(mbedtls_x509_crl_parse_der(list.Get(), bytes.data(), bytes.size()) == 0);
    const auto& issuer = list.Get()->issuer_raw;
    const auto& authority = genuine.authority.Get()->subject_raw;
    Require(!std::equal(issuer.p, issuer.p + issuer.len, authority.p, authority.p + authority.len));
}

// Whether a signature made with the key of `material` verifies with its certificate.
bool FitsTheGame(SigningMaterial& material) {
    RandomGenerator random;
    const Sha256Digest digest{1, 2, 3};
    Bytes signature(MBEDTLS_PK_SIGNATURE_MAX_SIZE);
    std::size_t length = 0;
    return random.Seed() &&
           SignSha256Digest(material.privateKey.Get(), digest, signature, length, random) == 0 &&
           mbedtls_pk_verify(&material.certificate.Get()->pk, MBEDTLS_MD_SHA256, digest.data(),
                             digest.size(), signature.data(), length) == 0;
}

void CheckPrivateKey(ByteView bytes) {
    static const fuzz::ScratchDirectory directory;
    static const std::string certificateFile =
        std::string(SEALKEEPER_FUZZ_CREDENTIALS_DIR) + "/game.cer";
    directory.Write("private.key", bytes);
    SigningMaterial material;
    const ResultCode code =
        LoadSigningMaterial({directory.Path() + "private.key", certificateFile, ""}, kProductId,
                            TrustCheck::Required, material);
    Require(code != ResultCode::Ok || FitsTheGame(material));
}

bool EqualsIgnoringCase(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
        return std::tolower(x) == std::tolower(y);
    });
}

void CheckProductId(ByteView bytes) {
    // Arguments of a process contain no zero byte.
    const std::string productId(bytes.begin(), std::find(bytes.begin(), bytes.end(), 0));
    Certificate certificate;
    const ResultCode code = VerifySigningCertificate(
        BuiltInTrustMaterial(), productId, GenuineCredentials().game, kNone, kNone, certificate);
    const bool isTheGames = EqualsIgnoringCase(productId, kProductId);
    Require(code == (isTheGames ? ResultCode::Ok : ResultCode::CertificateCNMismatch));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    g_logThreshold = LogLevel{0};
    constexpr std::array kChecks = {CheckCertificate,       CheckModCertificate,
                                    CheckParentCertificate, CheckRevocationList,
                                    CheckPrivateKey,        CheckProductId};
    ByteView input(data, size);
    const std::size_t check = fuzz::TakeByte(input);
    if (check < kChecks.size()) {
        kChecks[check](input);
    }
    return 0;
}
