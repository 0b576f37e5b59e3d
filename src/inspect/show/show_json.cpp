#include "inspect/show/show_json.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

#include "inspect/report/command_status.h"
#include "inspect/report/hex_text.h"
#include "inspect/report/json.h"
#include "inspect/show/entry_oddities.h"
#include "inspect/show/entry_walk.h"
#include "inspect/show/json_stream.h"

namespace sealkeeper {
namespace {

const char* KindName(ShownKind kind) {
    switch (kind) {
        case ShownKind::Unknown:
            return "unknown";
        case ShownKind::Catalogue:
            return "catalogue";
        case ShownKind::RuntimeConfiguration:
            return "runtime.conf";
    }
    return "";
}

const char* StateName(SignatureState state) {
    switch (state) {
        case SignatureState::Good:
            return "good";
        case SignatureState::Bad:
            return "bad";
        case SignatureState::CertificateMissing:
            return "certificate missing";
        case SignatureState::CertificateUnusable:
            return "certificate unusable";
    }
    return "";
}

Json InvalidJson(const InvalidFinding& finding) {
    Json json = {{"field", finding.field},
                 {"offset", finding.offset},
                 {"isInEntryBlock", finding.isInEntryBlock}};
    if (finding.entryIndex) {
        json["entryIndex"] = *finding.entryIndex;
    }
    json["message"] = finding.message;
    json["likelyCauses"] = finding.likelyCauses;
    return json;
}

Json FieldsJson(const std::vector<ShownField>& fields) {
    Json json = Json::array();
    for (const ShownField& field : fields) {
        Json member = {{"name", field.name}, {"offset", field.offset}, {"bytes", field.sizeBytes}};
        std::visit([&member](const auto& value) { member["value"] = value; }, field.value);
        if (!field.meaning.empty()) {
            member["meaning"] = field.meaning;
        }
        json.push_back(std::move(member));
    }
    return json;
}

Json SignatureJson(const SignatureFacts& signature) {
    Json json = {{"state", StateName(signature.state)}};
    AddFileName(json, "certificate", signature.certificatePath);
    if (!signature.reason.empty()) {
        json["reason"] = signature.reason;
    }
    if (signature.trust) {
        json["productId"] = signature.trust->productId;
        json["isTrusted"] = signature.trust->isTrusted;
        if (!signature.trust->isTrusted) {
            json["trustReason"] = signature.trust->reason;
        }
    }
    return json;
}

Json RevocationJson(const RevocationFacts& list) {
    Json json = {{"bytes", list.lengthBytes}, {"isList", list.isList}};
    if (list.isList) {
        json["issuer"] = list.issuer;
        json["thisUpdate"] = list.thisUpdate;
        json["nextUpdate"] = list.nextUpdate.empty() ? Json() : Json(list.nextUpdate);
        json["revoked"] = list.revoked;
    }
    if (!list.remark.empty()) {
        json["remark"] = list.remark;
    }
    return json;
}

Json TotalsJson(const EntryTotals& totals) {
    return {{"files", totals.entries},
            {"bytes", totals.fileBytes},
            {"chunks", totals.chunks},
            {"oddFiles", totals.oddEntries}};
}

Json HeadJson(const ShownFile& file) {
    Json json = Json::object();
    AddFileName(json, "file", file.path);
    json["kind"] = KindName(file.kind);
    json["bytes"] = file.sizeBytes;
    json["isValid"] = !file.invalid;
    if (file.invalid) {
        json["invalid"] = InvalidJson(*file.invalid);
    }
    json["fields"] = FieldsJson(file.fields);
    if (file.signature) {
        json["signature"] = SignatureJson(*file.signature);
    }
    if (file.revocationList) {
        json["revocationList"] = RevocationJson(*file.revocationList);
    }
    json["notes"] = file.notes;
    if (file.totals) {
        json["totals"] = TotalsJson(*file.totals);
    }
    return json;
}

Json EntryJson(const WalkedEntry& entry) {
    Json json = {{"path", entry.path.spelt},
                 {"bytes", entry.record.FileSizeBytes()},
                 {"chunks", entry.record.DigestCount()},
                 {"namePosition", entry.record.NamePosition()}};
    if (entry.path.form == StoredPath::Form::Aliased) {
        json["seenAs"] = entry.path.seen;
    }
    if (auto oddities = OdditiesOf(entry.record, entry.path); !oddities.empty()) {
        json["oddities"] = std::move(oddities);
    }
    return json;
}

void WriteWithDigests(const Json& entry, EntryWalk& walk, JsonStream& stream) {
    stream.BeginElement(entry, "digests");
    Sha256Digest digest;
    while (walk.NextDigest(digest)) {
        stream.AddToElement(HexText(digest));
    }
    stream.EndElement();
}

void WriteEntries(const FileToShow& file, const ShowOptions& options, JsonStream& stream) {
    stream.BeginArray("entries");
    auto walk = EntryWalk::Begin(*file.catalogue);
    WalkedEntry entry;
    for (std::uint64_t left = options.limit.value_or(file.shown.totals->entries);
         left > 0 && walk && walk->Next(entry); --left) {
        if (options.hasDigests) {
            WriteWithDigests(EntryJson(entry), *walk, stream);
        } else {
            stream.Add(EntryJson(entry));
        }
    }
    stream.EndArray();
}

}  // namespace

void WriteShowJson(const FileToShow& file, const ShowOptions& options, Console& console) {
    JsonStream stream(console, HeadJson(file.shown));
    if (file.catalogue) {
        WriteEntries(file, options, stream);
    }
    stream.Finish();
}

void WriteShowFailureJson(const std::string& path, const std::string& failure, Console& console) {
    Json json = Json::object();
    AddFileName(json, "file", path);
    AddFailure(json, failure, kStatusError);
    console.Write(JsonText(json));
}

}  // namespace sealkeeper
