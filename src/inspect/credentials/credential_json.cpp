#include "inspect/credentials/credential_json.h"

#include <nlohmann/json.hpp>

#include "inspect/credentials/chain_state.h"
#include "inspect/credentials/detail_json.h"
#include "inspect/credentials/finding_json.h"
#include "inspect/credentials/trust_json.h"
#include "inspect/report/json.h"

namespace sealkeeper {
namespace {

const char* ChainWord(ChainState chain) {
    switch (chain) {
        case ChainState::Authority:
            return "authority";
        case ChainState::ForeignAuthority:
            return "foreign authority";
        case ChainState::SelfSigned:
            return "self-signed";
        case ChainState::OtherIssuer:
            return "other issuer";
        case ChainState::NotChecked:
            return "not checked";
    }
    return "";
}

const char* RevocationWord(RevocationState revocation) {
    switch (revocation) {
        case RevocationState::NotRevoked:
            return "not revoked";
        case RevocationState::Revoked:
            return "revoked";
        case RevocationState::NotChecked:
            return "not checked";
    }
    return "";
}

Json CertificateJson(const CredentialFacts& facts, UtcTime now) {
    Json object = FileJson(facts.certificate.file);
    if (facts.certificate.details) {
        AddCertificateJson(*facts.certificate.details, now, object);
        object["chain"] = ChainWord(ChainOf(facts.certificate));
        object["revocation"] = RevocationWord(RevocationOf(facts.certificate, facts.trust));
    }
    return object;
}

Json PrivateKeyJson(const KeyFacts& key) {
    Json object = FileJson(key.file);
    if (key.details) {
        object["key"] = KeyJson(*key.details);
    }
    if (key.pairCode) {
        object["isPair"] = *key.pairCode == ResultCode::Ok;
    }
    return object;
}

Json GivenListJson(const GivenListFacts& list, UtcTime now) {
    Json object = FileJson(list.file);
    if (list.list) {
        AddListJson(*list.list, now, object);
    }
    return object;
}

}  // namespace

std::string CredentialJson(const CredentialFacts& facts, const CredentialFindings& findings,
                           UtcTime now) {
    Json report = {{"certificate", CertificateJson(facts, now)}};
    if (facts.productId) {
        report["productId"] = *facts.productId;
    }
    if (facts.key) {
        report["privateKey"] = PrivateKeyJson(*facts.key);
    }
    if (facts.revocationList) {
        report["revocationList"] = GivenListJson(*facts.revocationList, now);
    }
    report["builtIn"] = {{"authority", AuthorityJson(facts.trust.authority, now)},
                         {"revocationList", BuiltInListJson(facts.trust.revocationList, now)}};
    report["findings"] = FindingsJson(findings);
    report["generate"] = Json::object();
    AddCode(report["generate"], GenerateCode(facts));
    report["status"] = StatusOf(findings);
    return JsonText(report);
}

}  // namespace sealkeeper
