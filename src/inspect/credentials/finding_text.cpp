#include "inspect/credentials/finding_text.h"

#include "inspect/report/code_text.h"

namespace sealkeeper {
namespace {

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

}  // namespace sealkeeper
