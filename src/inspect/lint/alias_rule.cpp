#include <set>

#include "config/config_names.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/typed_values.h"

namespace sealkeeper {
namespace {

void LintAliasPart(const OutlinedText& part, LintFindings& findings) {
    for (const char* const refused : {"..", ":"}) {
        if (part.text.find(refused) != std::string::npos) {
            findings.Add(part.begin,
                         "The alias part " + ShownName(part.text) + " has '" + refused +
                             "' in it, so the tool refuses the file.",
                         "Write a part of a path inside the game directory.");
            return;
        }
    }
}

}  // namespace

void LintAliases(const LintedText& linted, LintFindings& findings) {
    std::set<std::string> names;
    for (const OutlinedValue* table :
         ValuesOfKind(linted, kSearchSection, kAliasPathsKey, ConfigValueKind::PairTable)) {
        for (std::size_t i = 0; i < table->texts.size(); ++i) {
            const OutlinedText& part = table->texts[i];
            LintAliasPart(part, findings);
            const bool isName = i % 2 == 0;
            if (isName && !names.insert(part.text).second) {
                findings.Add(part.begin,
                             "The alias " + ShownName(part.text) +
                                 " stands here again, and its first replacement is kept.",
                             "Remove one of them.");
            }
        }
    }
}

}  // namespace sealkeeper
