// Path patterns. The tool puts "./" before each, and compares the paths that result byte for byte.
#include <algorithm>
#include <string>

#include "config/config_names.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/typed_values.h"
#include "inspect/tree/lexical_path.h"
#include "inspect/tree/parent_component.h"
#include "platform/ascii_case.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

bool HasDrive(std::string_view path) {
    return path.size() >= 2 && IsAsciiLetter(path[0]) && path[1] == ':';
}

// The rest of `path` from the first component that is neither empty, "." nor "..".
std::string_view FromFirstName(std::string_view path) {
    while (!path.empty()) {
        const std::string_view component = path.substr(0, path.find('/'));
        if (!component.empty() && component != "." && component != "..") {
            return path;
        }
        path.remove_prefix(std::min(path.size(), component.size() + 1));
    }
    return path;
}

// Whether a ".." follows a named directory. A leading ".." leaves the game and is reported by what
// it matches.
bool GoesBack(std::string_view path) {
    return HasParentComponent(FromFirstName(path));
}

void LintDetour(std::string_view key, const OutlinedText& pattern, const std::string& path,
                LintFindings& findings) {
    const char* const effect = key == kExcludePathsKey
                                   ? ", so it excludes nothing that is found in a directory."
                                   : ", which the paths in the catalogue then have as well.";
    if (GoesBack(path)) {
        findings.Add(pattern.begin,
                     "The pattern " + ShownName(pattern.text) + " goes back by '..'" + effect,
                     "Write the path without '..'.");
        return;
    }
    const std::string shortest = LexicalPath(path);
    // The tool removes one trailing '/' itself.
    if (path == shortest || path == shortest + "/") {
        return;
    }
    findings.Add(pattern.begin,
                 "The pattern " + ShownName(pattern.text) +
                     " has a directory '.' or an empty one in it" + effect,
                 shortest.empty() ? "Write the names of directories and files."
                                  : "Write " + WholeValue(shortest) + ".");
}

// Matches are stored with the leading '/', and verify treats them as absolute paths.
void LintLeadingSlash(std::string_view key, const OutlinedText& pattern, LintFindings& findings) {
    const char* const effect =
        key == kExcludePathsKey
            ? ": with the '/' it excludes nothing that is found in a directory."
            : ": with the '/' verify looks for its files outside of the game and fails.";
    findings.Add(pattern.begin,
                 "The pattern " + ShownName(pattern.text) +
                     " begins with '/', but patterns are taken from the game directory" + effect,
                 "Write the path from the game directory on, without a '/' before it.");
}

void LintPattern(std::string_view key, const OutlinedText& pattern, LintFindings& findings) {
    const std::string path = WithForwardSlashes(pattern.text);
    if (HasDrive(path)) {
        findings.Add(pattern.begin,
                     "The pattern " + ShownName(pattern.text) +
                         " begins with a drive, but patterns are taken from the game directory.",
                     "Write the path from the game directory on.");
    } else if (path.starts_with('/')) {
        LintLeadingSlash(key, pattern, findings);
    } else {
        LintDetour(key, pattern, path, findings);
    }
    if (path.find("**") != std::string::npos) {
        findings.Add(pattern.begin,
                     "'**' in the pattern " + ShownName(pattern.text) +
                         " is no more than '*', which matches within one directory.",
                     "Write the name of a directory, which stands for all files below it.");
    }
}

}  // namespace

void LintPatterns(const LintedText& linted, LintFindings& findings) {
    for (const std::string_view key : {kIncludePathsKey, kExcludePathsKey}) {
        for (const OutlinedText& pattern : ElementsOf(linted, kSearchSection, key)) {
            LintPattern(key, pattern, findings);
        }
    }
}

}  // namespace sealkeeper
