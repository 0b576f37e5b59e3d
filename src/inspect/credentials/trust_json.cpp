#include "inspect/credentials/trust_json.h"

#include <nlohmann/json.hpp>

#include "inspect/credentials/detail_json.h"
#include "inspect/credentials/finding_json.h"

namespace sealkeeper {
namespace {

void AddFileJson(const BuiltInFile& file, Json& object) {
    if (!file.fingerprint.empty()) {
        object["sha256Fingerprint"] = file.fingerprint;
    }
    if (file.isDevelopment) {
        object["isDevelopment"] = *file.isDevelopment;
    }
}

}  // namespace

Json AuthorityJson(const AuthorityFacts& facts, UtcTime now) {
    Json object = Json::object();
    if (facts.certificate) {
        AddCertificateJson(*facts.certificate, now, object);
    }
    AddFileJson(facts.file, object);
    return object;
}

Json BuiltInListJson(const BuiltInListFacts& facts, UtcTime now) {
    Json object = Json::object();
    if (facts.list) {
        AddListJson(*facts.list, now, object);
    }
    AddFileJson(facts.file, object);
    return object;
}

std::string TrustJson(const TrustFacts& facts, const CredentialFindings& findings, UtcTime now) {
    return JsonText({{"authority", AuthorityJson(facts.authority, now)},
                     {"revocationList", BuiltInListJson(facts.revocationList, now)},
                     {"findings", FindingsJson(findings)},
                     {"status", StatusOf(findings)}});
}

}  // namespace sealkeeper
