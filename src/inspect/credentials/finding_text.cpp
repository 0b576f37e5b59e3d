#include "inspect/credentials/finding_text.h"

#include <nlohmann/json.hpp>

namespace sealkeeper {
namespace {

const char* SeverityText(FindingSeverity severity) {
    switch (severity) {
        case FindingSeverity::Warning:
            return "warning";
        case FindingSeverity::Error:
            return "error";
    }
    return "";
}

Style StyleOf(FindingSeverity severity) {
    switch (severity) {
        case FindingSeverity::Warning:
            return Style::Warning;
        case FindingSeverity::Error:
            return Style::Bad;
    }
    return Style::Plain;
}

}  // namespace

std::string CodeText(ResultCode code) {
    const char* const text =
        code == kPrivateKeyFileMissing ? "the private key is missing" : ResultCodeText(code);
    return std::to_string(ResultCodeNumber(code)) + " (" + text + ")";
}

std::string FindingsText(const CredentialFindings& findings, const Console& console) {
    std::string text;
    for (const CredentialFinding& finding : findings) {
        text += console.Styled(StyleOf(finding.severity), SeverityText(finding.severity)) + ": " +
                console.Foreign(finding.message) + "\n";
        if (finding.code) {
            text += "  generate: " + CodeText(*finding.code) + "\n";
        }
        text += "  cure: " + console.Foreign(finding.cure.text) + "\n";
        if (!finding.cure.command.empty()) {
            text += "  run:  " + console.Foreign(finding.cure.command) + "\n";
        }
    }
    return text.empty() ? text : text + "\n";
}

Json FindingsJson(const CredentialFindings& findings) {
    Json array = Json::array();
    for (const CredentialFinding& finding : findings) {
        Json object = {{"severity", SeverityText(finding.severity)},
                       {"name", finding.name},
                       {"message", finding.message},
                       {"cure", finding.cure.text}};
        if (!finding.cure.command.empty()) {
            object["command"] = finding.cure.command;
        }
        if (finding.code) {
            object["code"] = ResultCodeNumber(*finding.code);
        }
        array.push_back(std::move(object));
    }
    return array;
}

}  // namespace sealkeeper
