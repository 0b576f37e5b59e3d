// Keys without a value, and keys that occur more than once.
#include <cstddef>
#include <map>
#include <string>
#include <tuple>

#include "inspect/lint/known_keys.h"
#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

// The text ends before the value of `key`.
void LintKeyAtEnd(const LintedText& linted, const OutlinedKey& key, LintFindings& findings) {
    const std::string last(1, linted.Text().back());
    if (IsBlank(last) || last == "}") {
        findings.Add(key.begin, ShownName(key.name) + " has no value.",
                     "Write its value, or remove it.");
    } else {
        findings.Add(key.begin,
                     ShownName(key.name) +
                         " has no value, since the very last character of a file is not looked at.",
                     "End the value with a semicolon and the file with a line break.");
    }
}

std::string EffectOfRepetition(ConfigValueKind kind) {
    switch (kind) {
        case ConfigValueKind::List:
            return " stands here again and adds to the list of ";
        case ConfigValueKind::PairTable:
            return " stands here again and adds to the pairs of ";
        case ConfigValueKind::String:
        case ConfigValueKind::Number:
        case ConfigValueKind::Flag:
            break;
    }
    return " stands here again and replaces the value of ";
}

}  // namespace

void LintKeysWithoutValue(const LintedText& linted, LintFindings& findings) {
    const ConfigOutline& outline = linted.Outline();
    for (const OutlinedValue& value : outline.values) {
        const OutlinedKey& key = linted.KeyOf(value);
        if (key.section != value.section && key.begin < findings.FirstMisread()) {
            findings.Add(key.begin,
                         ShownName(key.name) +
                             " has no value in its section and takes the one on " +
                             linted.LineName(value.begin) + " as its own.",
                         "Write its value, or remove it.");
        }
    }
    if (outline.pendingKey == kNoIndex || outline.stop) {
        return;
    }
    const OutlinedKey& last = outline.keys[outline.pendingKey];
    if (last.begin < findings.FirstMisread()) {
        LintKeyAtEnd(linted, last, findings);
    }
}

void LintRepeatedKeys(const LintedText& linted, LintFindings& findings) {
    // The latest place of each section, key and kind of value.
    std::map<std::tuple<std::string, std::string, ConfigValueKind>, std::size_t> seen;
    for (const OutlinedValue& value : linted.Outline().values) {
        const OutlinedKey& key = linted.KeyOf(value);
        const KnownKey* const known = FindKnownKey(linted.SectionOf(value).name, key.name);
        if (known == nullptr) {
            continue;
        }
        // The tool takes a number for a flag, so that each replaces the other.
        const ConfigValueKind kind = TakesKind(*known, value.kind) ? known->kind : value.kind;
        const auto [first, isNew] =
            seen.try_emplace({std::string(known->section), key.name, kind}, key.begin);
        if (isNew) {
            continue;
        }
        const bool adds = kind == ConfigValueKind::List || kind == ConfigValueKind::PairTable;
        findings.Add(
            key.begin,
            ShownName(key.name) + EffectOfRepetition(kind) + linted.LineName(first->second) + ".",
            adds ? "Write all of them under one key." : "Keep one of them.");
        first->second = key.begin;
    }
}

}  // namespace sealkeeper
