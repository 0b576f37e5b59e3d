#include "inspect/rules/rules_json.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "inspect/report/command_status.h"
#include "inspect/report/json.h"

namespace sealkeeper {
namespace {

// What is looked at.
Json SubjectJson(const std::string& configFile, const std::string& gameDirectory) {
    Json json = Json::object();
    AddFileName(json, "configFile", configFile);
    AddFileName(json, "gameDirectory", gameDirectory);
    return json;
}

Json FileJson(const JudgedFile& file) {
    Json json = Json::object();
    AddFileName(json, "path", file.path);
    json["bytes"] = file.sizeBytes;
    json["state"] = file.leftOut ? "left out" : "sealed";
    json["reason"] = file.leftOut ? Json(LeftOutReasonText(*file.leftOut)) : Json(nullptr);
    return json;
}

Json WarningJson(const RuleWarning& warning) {
    const bool hasPlace = warning.line != 0;
    Json json = Json::object();
    json["line"] = hasPlace ? Json(warning.line) : Json(nullptr);
    json["column"] = hasPlace ? Json(warning.column) : Json(nullptr);
    json["message"] = warning.message;
    json["cure"] = warning.cure;
    return json;
}

Json TotalJson(const FileTotal& total) {
    Json json = Json::object();
    json["files"] = total.files;
    json["bytes"] = total.bytes;
    return json;
}

Json TotalsJson(const RulesTotals& totals) {
    Json byReason = Json::object();
    for (const auto& [reason, total] : totals.leftOutBy) {
        byReason[LeftOutReasonText(reason)] = TotalJson(total);
    }
    Json json = Json::object();
    json["sealed"] = TotalJson(totals.sealed);
    json["leftOut"] = TotalJson(totals.leftOut);
    json["byReason"] = std::move(byReason);
    return json;
}

Json RefusalJson(const std::optional<Refusal>& refusal) {
    if (!refusal) {
        return nullptr;
    }
    Json json = Json::object();
    AddCode(json, refusal->code);
    json["message"] = refusal->message;
    return json;
}

}  // namespace

std::string RulesJson(const RulesReport& report) {
    Json files = Json::array();
    for (const JudgedFile& file : report.files) {
        files.push_back(FileJson(file));
    }
    Json warnings = Json::array();
    for (const RuleWarning& warning : report.warnings) {
        warnings.push_back(WarningJson(warning));
    }
    Json json = SubjectJson(report.configFile, report.gameDirectory);
    json["refusal"] = RefusalJson(report.refusal);
    json["files"] = std::move(files);
    json["warnings"] = std::move(warnings);
    json["totals"] = TotalsJson(TotalsOf(report));
    return JsonText(json);
}

std::string RulesFailureJson(const std::string& configFile, const std::string& gameDirectory,
                             const std::string& failure) {
    Json json = SubjectJson(configFile, gameDirectory);
    AddFailure(json, failure, kStatusError);
    return JsonText(json);
}

}  // namespace sealkeeper
