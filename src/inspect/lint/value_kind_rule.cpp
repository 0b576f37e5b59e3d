// Values that are not of the kind the tool reads under their key.
#include <string>

#include "config/config_names.h"
#include "inspect/lint/known_keys.h"
#include "inspect/lint/leading_digits.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"
#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

// The value without quotes if that would make it valid; else empty.
std::string Unquoted(const KnownKey& key, const OutlinedValue& value) {
    if (value.kind != ConfigValueKind::String) {
        return {};
    }
    const std::string& text = value.texts.front().text;
    if (key.kind == ConfigValueKind::Number && IsWholeNumber(text)) {
        return text + ";";
    }
    std::string lowered = LowerCasedAscii(text);
    const bool isFlag = lowered == "true" || lowered == "false";
    return key.kind == ConfigValueKind::Flag && isFlag ? lowered : "";
}

std::string CureOf(const KnownKey& key, const OutlinedValue& value) {
    const std::string assignment = std::string(key.name) + " = ";
    if (const std::string unquoted = Unquoted(key, value); !unquoted.empty()) {
        return "Write '" + assignment + unquoted + "'.";
    }
    if (key.kind == ConfigValueKind::List && value.kind == ConfigValueKind::String) {
        return "Write '" + assignment + "[" + WholeValue(value.texts.front().text) + "]'.";
    }
    return "Write " + KindName(key.kind) + ", as in '" + assignment + std::string(key.example) +
           "'.";
}

void LintWorkingDirectory(const OutlinedValue& value, LintFindings& findings) {
    findings.Add(value.begin,
                 value.kind == ConfigValueKind::String
                     ? "The tool refuses a file that has a 'working_directory'."
                     : "The tool takes no 'working_directory' from the file.",
                 "Remove it and give the directory as -target_game_dir on the command line.");
}

}  // namespace

void LintValueKinds(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue& value : linted.Outline().values) {
        const OutlinedKey& key = linted.KeyOf(value);
        const KnownKey* const known = FindKnownKey(linted.SectionOf(value).name, key.name);
        if (known == nullptr) {
            continue;
        }
        if (known->name == kWorkingDirectoryKey) {
            LintWorkingDirectory(value, findings);
        } else if (!TakesKind(*known, value.kind)) {
            const bool isRefused =
                known->name == kAliasPathsKey && value.kind == ConfigValueKind::List;
            findings.Add(
                value.begin,
                "The value of " + ShownName(key.name) + " is " + KindName(value.kind) +
                    " and not " + KindName(known->kind) +
                    (isRefused ? ", so the tool refuses the file." : ", so it is ignored."),
                CureOf(*known, value));
        }
    }
}

}  // namespace sealkeeper
