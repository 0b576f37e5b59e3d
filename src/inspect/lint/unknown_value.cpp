#include "inspect/lint/unknown_value.h"

#include <optional>
#include <string>
#include <string_view>

#include "inspect/lint/known_keys.h"
#include "inspect/lint/shown_text.h"
#include "inspect/lint/wrong_quotes.h"
#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kWordEnd = " \t\r\n;,=}";

const OutlinedKey& PendingKey(const LintedText& linted) {
    return linted.Outline().keys[linted.Outline().pendingKey];
}

// The section name that `key` would be if a brace or colon ended it.
std::string_view AsSectionName(std::string_view key) {
    return key.substr(0, key.find_first_of("{:"));
}

std::optional<Trouble> NestedSection(const LintedText& linted, std::string_view rest) {
    const ConfigOutline& outline = linted.Outline();
    const OutlinedKey& key = PendingKey(linted);
    const bool hasBrace = rest.starts_with('{') || key.name.find('{') != std::string::npos;
    if (!hasBrace && !IsKnownSection(AsSectionName(key.name))) {
        return std::nullopt;
    }
    const std::string open = ShownName(outline.sections[outline.openSection].name);
    return Trouble{ShownName(AsSectionName(key.name)) + " begins before " + open + " is closed",
                   "Write '}' at the end of " + open + "."};
}

std::string CureByKind(std::string_view keyName, std::string_view word) {
    const KnownKey* const key = FindKnownKey(keyName);
    if (key == nullptr) {
        return "Write a text in double quotes, a number with a semicolon, or remove the key.";
    }
    if (key->kind == ConfigValueKind::String) {
        return "Write " + WholeValue(word) + " in double quotes.";
    }
    return "Write " + KindName(key->kind) + ", as in '" + std::string(key->name) + " = " +
           std::string(key->example) + "'.";
}

bool IsFollowedByEqualsSign(std::string_view rest, std::string_view word) {
    const std::size_t next = rest.find_first_not_of(" \t", word.size());
    return next != std::string_view::npos && rest[next] == '=';
}

}  // namespace

Trouble UnknownValueTrouble(const LintedText& linted, std::size_t offset) {
    const std::string_view rest = linted.Text().substr(offset);
    const OutlinedKey& key = PendingKey(linted);
    const std::string name = ShownName(key.name);
    if (key.section != linted.Outline().openSection) {
        return {
            name + " has no value before its section ends",
            "Write the value of " + name + " on " + linted.LineName(key.begin) + ", or remove it."};
    }
    if (auto nested = NestedSection(linted, rest); nested) {
        return *nested;
    }
    if (rest.starts_with('=')) {
        return {"The '=' of " + name + " stands after a comment, where its value is expected",
                "Write the key and '=' on one line without a comment between them."};
    }
    if (StartsWithWrongQuote(rest)) {
        return {"The text of " + name + " is not in straight double quotes",
                "Write it in straight double quotes, as in \"text\"."};
    }
    if (rest.starts_with('-')) {
        return {"The number of " + name + " begins with '-', and there are no numbers below 0",
                "Write a number in digits, and a semicolon."};
    }
    const std::string_view word = rest.substr(0, rest.find_first_of(kWordEnd));
    if (FindKnownKey(LowerCasedAscii(word)) != nullptr || IsFollowedByEqualsSign(rest, word)) {
        return {
            name + " has no value before " + ShownName(word),
            "Write the value of " + name + " on " + linted.LineName(key.begin) + ", or remove it."};
    }
    return {ShownName(word) +
                " is no value: neither in quotes or brackets, nor a number, true or false",
            CureByKind(key.name, word)};
}

}  // namespace sealkeeper
