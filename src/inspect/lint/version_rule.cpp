#include <string>

#include "config/catalogue_rules.h"
#include "config/config_names.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/typed_values.h"

namespace sealkeeper {
namespace {

// "version = 2;".
std::string SupportedVersion() {
    return std::string(kVersionKey) + " = " + std::to_string(kSupportedConfigVersion) + ";";
}

}  // namespace

void LintVersion(const LintedText& linted, LintFindings& findings) {
    // Otherwise the tool refuses the file before it looks for a version.
    if (!linted.IsParsed()) {
        return;
    }
    const auto versions = ValuesOfKind(linted, kInfoSection, kVersionKey, ConfigValueKind::Number);
    if (versions.empty()) {
        AddAtSection(
            linted, kInfoSection,
            "The tool reads no version here, takes the file for one of version 1 and refuses it.",
            "Write 'config_info { " + SupportedVersion() + " }'.", findings);
    } else if (versions.back()->number != kSupportedConfigVersion) {
        findings.Add(versions.back()->begin,
                     "The version is " + std::to_string(versions.back()->number) +
                         ", and the tool refuses every one but " +
                         std::to_string(kSupportedConfigVersion) + ".",
                     "Write '" + SupportedVersion() + "'.");
    }
}

}  // namespace sealkeeper
