// Warnings about path aliases.
#include <map>
#include <string>

#include "catalogue/catalogue_entry.h"
#include "catalogue/path_alias.h"
#include "inspect/report/number_text.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/warning_words.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// How many paths each alias changes, by the name of the alias.
std::map<std::wstring, std::size_t> CountUses(const Selection& selection, const AliasMap& aliases) {
    std::map<std::wstring, std::size_t> uses;
    for (const SelectedFile& file : selection.files) {
        if (const auto* const alias =
                FirstAliasIn(aliases, Utf16ToWide(StoredFormOf(Utf8ToWide(file.path))))) {
            ++uses[alias->first];
        }
    }
    return uses;
}

}  // namespace

void LintAliasUses(const LintSubject& subject, RuleWarnings& warnings) {
    const CatalogueConfig& config = subject.selection.config;
    auto uses = CountUses(subject.selection, WideAliases(config.pathAliases));
    for (const auto& [name, value] : config.pathAliases) {
        const auto found = subject.places.aliases.find(name);
        const TextPlace place = found == subject.places.aliases.end() ? kNoPlace : found->second;
        const std::size_t count = uses[Utf8ToWide(name)];
        if (count == 0) {
            warnings.push_back(WarningAt(
                place,
                "The alias '" + name +
                    "' changes no path: none contains it, or another alias applies first.",
                "Correct it or take it out."));
            continue;
        }
        warnings.push_back(WarningAt(
            place,
            "The alias '" + name + "' changes the stored paths of " + CountText(count, "file") +
                ": verify looks for another file in place of each, and usually fails.",
            "Take it out, unless these files are checked by a client that knows aliases and never by verify."));
    }
}

}  // namespace sealkeeper
