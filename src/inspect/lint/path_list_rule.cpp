// The two lists of patterns, of which the tool wants exactly one.
#include <algorithm>

#include "config/config_names.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/typed_values.h"

namespace sealkeeper {

void LintPathLists(const LintedText& linted, LintFindings& findings) {
    // Otherwise the tool refuses the file before it looks for them.
    if (!linted.IsParsed()) {
        return;
    }
    const auto includes =
        ValuesOfKind(linted, kSearchSection, kIncludePathsKey, ConfigValueKind::List);
    const auto excludes =
        ValuesOfKind(linted, kSearchSection, kExcludePathsKey, ConfigValueKind::List);
    if (includes.empty() && excludes.empty()) {
        AddAtSection(
            linted, kSearchSection,
            "The tool reads neither a list include_paths nor a list exclude_paths here, and refuses the file.",
            "Write one of them in search_options, as in 'include_paths = [\"Content\"]'.",
            findings);
    } else if (!includes.empty() && !excludes.empty()) {
        const std::size_t second = std::max(includes.front()->begin, excludes.front()->begin);
        findings.Add(
            second, "There are both include_paths and exclude_paths, so the tool refuses the file.",
            "Keep one of them.");
    } else if (!includes.empty() && ElementsOf(linted, kSearchSection, kIncludePathsKey).empty()) {
        findings.Add(
            includes.front()->begin,
            "The list of include_paths has no elements, which the tool takes for excluding nothing: it hashes every file of the game.",
            "Write what to hash, or 'exclude_paths = [\"Quorvane\"]' if every file outside the output folder is meant.");
    }
}

}  // namespace sealkeeper
