// Feeds any bytes as one of the files that `credentials` takes; the first byte says which. The
// reported kind of a file must agree with what the library parses, and the reported outcome of
// generate with what generate does.
#include <mbedtls/pk.h>
#include <mbedtls/x509_csr.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "app/console_log.h"
#include "fuzzer.h"
#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_findings.h"
#include "inspect/credentials/credential_json.h"
#include "inspect/credentials/credential_text.h"
#include "inspect/report/console.h"
#include "inspect/report/json.h"
#include "inspect/report/logged_error.h"
#include "inspect/x509/file_kind.h"
#include "runtime/certificate_trust.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/signing_material.h"
#include "runtime/trust_material.h"
#include "scratch_directory.h"

namespace {

using namespace sealkeeper;
using fuzz::Bytes;
using fuzz::ByteView;
using fuzz::Require;

using CertificateRequest =
    MbedTlsContext<mbedtls_x509_csr, mbedtls_x509_csr_init, mbedtls_x509_csr_free>;

const std::string kProductId = "FuzzedGame";

std::string Genuine(const std::string& name) {
    return std::string(SEALKEEPER_FUZZ_CREDENTIALS_DIR) + "/" + name;
}

Bytes WithLast(ByteView bytes, std::uint8_t last) {
    Bytes longer(bytes.begin(), bytes.end());
    longer.push_back(last);
    return longer;
}

// A file is judged by its first PEM label, but the library searches for several labels in turn.
enum class Labels { None, One, Several };

Labels LabelsIn(ByteView bytes) {
    constexpr std::string_view kBegin = "-----BEGIN";
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::size_t first = text.find(kBegin);
    if (first == std::string_view::npos) {
        return Labels::None;
    }
    return first == text.rfind(kBegin) ? Labels::One : Labels::Several;
}

void CheckCutOff(ByteView bytes, std::size_t wholeBytes) {
    for (const std::size_t cut : {wholeBytes - 1, wholeBytes / 2}) {
        const Bytes start(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(cut));
        Require(FileKindOf(start) == FileKind::CutOffDer || LabelsIn(start) != Labels::None);
    }
}

void CheckParsedDer(ByteView bytes, FileKind kind) {
    Certificate certificate;
    const bool isCertificate = ParseCertificate(bytes, certificate) == 0;
    Require(isCertificate == (kind == FileKind::DerCertificate));
    if (isCertificate) {
        CheckCutOff(bytes, certificate.Get()->raw.len);
        return;
    }
    RevocationList list;
    const bool isList = mbedtls_x509_crl_parse_der(list.Get(), bytes.data(), bytes.size()) == 0;
    Require(isList == (kind == FileKind::DerRevocationList));
    if (isList) {
        CheckCutOff(bytes, list.Get()->raw.len);
        return;
    }
    CertificateRequest request;
    if (mbedtls_x509_csr_parse_der(request.Get(), bytes.data(), bytes.size()) == 0) {
        Require(kind == FileKind::DerCertificateRequest);
    }
}

bool IsPublicKey(ByteView bytes) {
    PrivateKey key;
    return mbedtls_pk_parse_public_key(key.Get(), bytes.data(), bytes.size()) == 0;
}

bool IsParsedAsCertificate(ByteView bytes) {
    Certificate certificate;
    return mbedtls_x509_crt_parse(certificate.Get(), bytes.data(), bytes.size()) == 0;
}

// Whether `isParsed` takes `bytes` as PEM, which the library needs with a terminating zero. A DER
// file that lacks its last byte becomes whole with any byte, so another one must not do.
bool IsPem(ByteView bytes, bool (*isParsed)(ByteView)) {
    return isParsed(WithLast(bytes, 0)) && !isParsed(WithLast(bytes, 1));
}

void CheckParsedPem(ByteView bytes, FileKind kind) {
    Require(!IsPem(bytes, IsParsedAsCertificate) || IsCertificate(kind));
    Require(!IsPem(bytes, IsPublicKey) || kind == FileKind::PublicKey);
}

FileKind CheckKind(ByteView bytes) {
    const FileKind kind = FileKindOf(bytes);
    // Elsewhere in memory, with a different byte past the end.
    const Bytes copy = WithLast(bytes, 0);
    Require(FileKindOf(ByteView(copy).first(bytes.size())) == kind);
    Require(std::string_view(FileKindText(kind)).size() > 3);
    Require((kind == FileKind::Empty) == bytes.empty());
    CheckParsedDer(bytes, kind);
    const Labels labels = LabelsIn(bytes);
    Require(!IsPublicKey(bytes) || kind == FileKind::PublicKey || labels == Labels::Several);
    if (labels == Labels::One) {
        CheckParsedPem(bytes, kind);
    }
    return kind;
}

bool HasErrorWith(const CredentialFindings& findings, ResultCode code) {
    return std::any_of(findings.begin(), findings.end(), [code](const CredentialFinding& finding) {
        return finding.severity == FindingSeverity::Error && finding.code == code;
    });
}

void CheckFindings(const CredentialFindings& findings, ResultCode code) {
    Require(code == ResultCode::Ok || HasErrorWith(findings, code));
    bool hadWarning = false;
    for (const CredentialFinding& finding : findings) {
        const bool isWarning = finding.severity == FindingSeverity::Warning;
        Require(isWarning || !hadWarning);
        // What generate accepts is not reported as an error.
        Require(isWarning || !finding.code || *finding.code == ResultCode::Ok ||
                code != ResultCode::Ok);
        Require(*finding.name != '\0' && !finding.message.empty() && !finding.cure.text.empty());
        hadWarning = isWarning;
    }
}

void CheckReports(const CredentialFacts& facts, const CredentialFindings& findings, UtcTime now) {
    static const Console console;
    Require(CredentialText(facts, findings, now, console).ends_with('\n'));
    Require(nlohmann::json::accept(JsonText(CredentialJson(facts, findings, now))));
}

ResultCode Generate(const CredentialFiles& files) {
    SigningMaterial material;
    return LoadSigningMaterial({*files.key, files.certificate, files.revocationList.value_or("")},
                               kProductId, TrustCheck::Required, material);
}

CredentialFacts CheckFiles(const CredentialFiles& files) {
    const CredentialFacts facts = GatherCredentialFacts(files, BuiltInTrustMaterial());
    const ResultCode code = GenerateCode(facts);
    Require(code == Generate(files));
    const UtcTime now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    constexpr std::int64_t kWarnDays = 30;
    const CredentialFindings findings = JudgeCredentials(facts, {now, kWarnDays});
    CheckFindings(findings, code);
    CheckReports(facts, findings, now);
    return facts;
}

CredentialFiles GenuineFiles() {
    return {Genuine("game.cer"), Genuine("game.key"), std::nullopt, kProductId};
}

void CheckCertificate(const std::string& path, FileKind kind) {
    CredentialFiles files = GenuineFiles();
    files.certificate = path;
    const CredentialFacts facts = CheckFiles(files);
    Require(facts.certificate.file.kind == kind);
    Require(facts.certificate.details || kind != FileKind::DerCertificate);
    Require(!facts.certificate.details || IsCertificate(kind));
}

void CheckKey(const std::string& path, FileKind kind) {
    CredentialFiles files = GenuineFiles();
    files.key = path;
    const CredentialFacts facts = CheckFiles(files);
    Require((facts.key->code == ResultCode::Ok) == facts.key->details.has_value());
    // A file that the library reads as a key must not be reported as anything else.
    const bool isRead = facts.key->details.has_value();
    Require(!isRead || IsPrivateKey(kind) || LabelsIn(fuzz::ContentOf(path)) == Labels::Several);
    Require(isRead != facts.key->file.kind.has_value());
}

void CheckList(const std::string& path, FileKind kind) {
    CredentialFiles files = GenuineFiles();
    files.revocationList = path;
    const CredentialFacts facts = CheckFiles(files);
    Require(facts.revocationList->list.has_value() == (kind == FileKind::DerRevocationList));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isQuiet = [] {
        KeepLogQuiet();
        return true;
    }();
    Require(isQuiet);
    constexpr std::array kChecks = {CheckCertificate, CheckKey, CheckList};
    ByteView input(data, size);
    const std::size_t check = fuzz::TakeByte(input);
    if (check >= kChecks.size()) {
        return 0;
    }
    static const fuzz::ScratchDirectory directory;
    directory.Write("credential", input);
    kChecks[check](directory.Path() + "credential", CheckKind(input));
    return 0;
}
