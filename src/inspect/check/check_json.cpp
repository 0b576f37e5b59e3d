#include "inspect/check/check_json.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "inspect/report/json.h"

namespace sealkeeper {
namespace {

Json VerificationJson(const CheckReport& report) {
    Json verification = Json::object();
    AddCode(verification, report.code);
    verification["isComplete"] = report.failure.empty();
    if (!report.failure.empty()) {
        verification["failure"] = report.failure;
    }
    return verification;
}

Json CataloguesJson(const CheckReport& report) {
    Json catalogues = Json::array();
    for (const CheckedCatalogue& catalogue : report.catalogues) {
        Json json = {{"name", catalogue.name}, {"files", catalogue.files}};
        AddCode(json, catalogue.code);
        catalogues.push_back(std::move(json));
    }
    return catalogues;
}

Json FilesJson(const CheckReport& report) {
    Json files = Json::array();
    for (const CheckedFile& file : report.files) {
        Json json = {{"path", file.path},
                     {"catalogue", report.catalogues[file.catalogueIndex].name},
                     {"bytes", file.listedSizeBytes}};
        AddCode(json, file.code);
        json["isAliased"] = file.isAliased;
        files.push_back(std::move(json));
    }
    return files;
}

Json SummaryJson(const CheckReport& report) {
    Json summary = Json::array();
    for (const auto& [code, count] : CountsByCode(report)) {
        Json json = Json::object();
        AddCode(json, code);
        json["files"] = count;
        summary.push_back(std::move(json));
    }
    return summary;
}

// Null if the verification ended earlier.
Json RuntimeConfigurationJson(const CheckReport& report) {
    if (!report.runtimeConfiguration) {
        return nullptr;
    }
    Json json = {{"state", RuntimeConfigurationVerdictText(*report.runtimeConfiguration)}};
    AddCode(json, CodeOf(*report.runtimeConfiguration));
    if (!report.runtimeConfigurationFailure.empty()) {
        json["failure"] = report.runtimeConfigurationFailure;
    }
    return json;
}

Json AdditionsJson(const CheckReport& report) {
    Json additions = Json::array();
    for (const Addition& addition : report.additions) {
        Json json = {{"kind", AdditionKindText(addition.kind)}};
        AddFileName(json, "path", addition.path);
        if (!addition.target.empty()) {
            AddFileName(json, "target", addition.target);
        }
        if (addition.sealedFiles > 0) {
            json["sealedFiles"] = addition.sealedFiles;
        }
        if (!addition.reason.empty()) {
            json["reason"] = addition.reason;
        }
        additions.push_back(std::move(json));
    }
    return additions;
}

}  // namespace

std::string CheckJson(const CheckReport& report, bool isStrict) {
    Json json = Json::object();
    AddFileName(json, "gameDirectory", report.gameDirectory);
    json["productId"] = report.productId;
    json["isStrict"] = isStrict;
    json["status"] = StatusOf(report, isStrict);
    json["verification"] = VerificationJson(report);
    json["catalogues"] = CataloguesJson(report);
    json["files"] = FilesJson(report);
    json["summary"] = SummaryJson(report);
    json["runtimeConfiguration"] = RuntimeConfigurationJson(report);
    json["additions"] = AdditionsJson(report);
    return JsonText(json);
}

}  // namespace sealkeeper
