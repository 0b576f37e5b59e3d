#include "inspect/credentials/trust_json.h"

#include <nlohmann/json.hpp>

#include "inspect/credentials/detail_json.h"
#include "inspect/credentials/finding_text.h"

namespace sealkeeper {

Json AuthorityJson(const AuthorityFacts& facts, UtcTime now) {
    Json object = Json::object();
    if (facts.certificate) {
        AddCertificateJson(*facts.certificate, now, object);
    }
    object["sha256Fingerprint"] = facts.fingerprint;
    object["isDevelopment"] = facts.isDevelopment;
    return object;
}

Json BuiltInListJson(const BuiltInListFacts& facts, UtcTime now) {
    Json object = Json::object();
    if (facts.list) {
        AddListJson(*facts.list, now, object);
    }
    object["sha256Fingerprint"] = facts.fingerprint;
    object["isDevelopment"] = facts.isDevelopment;
    return object;
}

std::string TrustJson(const TrustFacts& facts, const CredentialFindings& findings, UtcTime now) {
    return JsonText({{"authority", AuthorityJson(facts.authority, now)},
                     {"revocationList", BuiltInListJson(facts.revocationList, now)},
                     {"findings", FindingsJson(findings)},
                     {"status", StatusOf(findings)}});
}

}  // namespace sealkeeper
