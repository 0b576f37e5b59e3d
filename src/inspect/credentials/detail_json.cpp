#include "inspect/credentials/detail_json.h"

#include <nlohmann/json.hpp>

namespace sealkeeper {

Json KeyJson(const KeyDetails& key) {
    return {{"type", key.type}, {"bits", key.bits}};
}

void AddCertificateJson(const CertificateDetails& certificate, UtcTime now, Json& object) {
    object["subject"] = certificate.subject;
    object["issuer"] = certificate.issuer;
    object["commonNames"] = certificate.commonNames;
    object["dnsNames"] = certificate.dnsNames;
    object["serial"] = certificate.serial;
    object["notBefore"] = IsoTimeText(certificate.notBefore);
    object["notAfter"] = IsoTimeText(certificate.notAfter);
    object["daysLeft"] = DaysLeft(certificate.notAfter, now);
    object["key"] = KeyJson(certificate.key);
    object["signature"] = certificate.signature;
}

void AddListJson(const ListDetails& list, UtcTime now, Json& object) {
    Json revoked = Json::array();
    for (const RevokedSerial& entry : list.revoked) {
        Json item = {{"serial", entry.serial}};
        if (entry.revokedOn) {
            item["revokedOn"] = IsoTimeText(*entry.revokedOn);
        }
        revoked.push_back(std::move(item));
    }
    object["issuer"] = list.issuer;
    object["signature"] = list.signature;
    object["thisUpdate"] = IsoTimeText(list.thisUpdate);
    if (list.nextUpdate) {
        object["nextUpdate"] = IsoTimeText(*list.nextUpdate);
        object["daysLeft"] = DaysLeft(*list.nextUpdate, now);
    }
    object["revokedCount"] = list.revoked.size();
    object["revoked"] = std::move(revoked);
}

Json FileJson(const ExaminedFile& file) {
    Json object = Json::object();
    AddFileName(object, "path", file.path);
    if (file.mode) {
        object["mode"] = OctalText(*file.mode);
    }
    if (file.kind) {
        object["kind"] = FileKindText(*file.kind);
    }
    return object;
}

}  // namespace sealkeeper
