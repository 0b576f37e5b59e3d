// Extensions. The tool compares them byte for byte, from the last dot of a name.
#include <algorithm>
#include <string>

#include "config/config_names.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/typed_values.h"

namespace sealkeeper {
namespace {

bool Has(std::string_view text, std::string_view oneOf) {
    return text.find_first_of(oneOf) != std::string_view::npos;
}

std::string FromLastDot(std::string_view text) {
    return std::string(text.substr(std::min(text.rfind('.'), text.size())));
}

// Why no file can have the extension, and what to write instead. The first reason that holds is
// reported.
struct NoExtension {
    bool holds;
    const char* reason;
    std::string cure;
};

void LintExtension(const OutlinedText& extension, LintFindings& findings) {
    const std::string& text = extension.text;
    const std::string last = FromLastDot(text);
    const std::string write = last.size() > 1 && !Has(last, "*?/\\")
                                  ? "Write " + WholeValue(last) + "."
                                  : "Write it as in \".pdb\".";
    const NoExtension reasons[] = {
        {Has(text, ",;"), "is one extension to the tool, and no file has it",
         "Write each in quotes of its own, as in \".pdb\", \".log\"."},
        {Has(text, "*?"), "has a wildcard in it, which is only a character here", write},
        {Has(text, "/\\"), "has a directory in it, which no extension has", write},
        {text.front() != '.', "has no dot at its start, so no file has it",
         last.empty() ? "Write " + WholeValue("." + text) + "." : write},
        {text.back() == '.', "ends in a dot, so no file has it", "Write it as in \".pdb\"."},
        {last != text, "has two dots, but an extension begins at the last one", write},
    };
    const auto* const found = std::find_if(std::begin(reasons), std::end(reasons),
                                           [](const NoExtension& reason) { return reason.holds; });
    if (found != std::end(reasons)) {
        findings.Add(extension.begin,
                     "The extension " + ShownName(text) + " " + found->reason + ".", found->cure);
    }
}

}  // namespace

void LintExtensions(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedText& extension :
         ElementsOf(linted, kSearchSection, kExcludeExtensionsKey)) {
        LintExtension(extension, findings);
    }
}

}  // namespace sealkeeper
