// Runs of backslashes, which are read as one. A pair is one in most languages too, so it is
// reported only where more may be meant: at the start, as in a network share.
#include <algorithm>
#include <cstddef>

#include "inspect/lint/lint_rules.h"

namespace sealkeeper {
namespace {

constexpr std::size_t kLeastToldOf = 3;
constexpr std::size_t kLeastAtStart = 2;

void LintText(std::string_view text, std::size_t offset, LintFindings& findings) {
    std::size_t least = kLeastAtStart;
    for (std::size_t begin = 0; begin < text.size(); least = kLeastToldOf) {
        const std::size_t end = std::min(text.find_first_not_of('\\', begin), text.size());
        if (end - begin >= least) {
            findings.Add(offset + begin,
                         "The " + std::to_string(end - begin) +
                             " backslashes here are read as a single one.",
                         "Write one backslash, or '/' between directories.");
            return;
        }
        begin = std::min(text.find('\\', end), text.size());
    }
}

}  // namespace

void LintBackslashes(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedValue& value : linted.Outline().values) {
        for (const OutlinedText& text : value.texts) {
            LintText(linted.Part(text.begin, text.end), text.begin, findings);
        }
    }
}

}  // namespace sealkeeper
