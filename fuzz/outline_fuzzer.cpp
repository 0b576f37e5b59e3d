// Feeds any bytes to the outline of a configuration text. The outline must not affect the scan: the
// document is the same without it. Everything in it must be where it says, in order, and it must
// account for everything in the document.
#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/config_document.h"
#include "config/config_outline.h"
#include "config/config_values.h"
#include "fuzzer.h"

namespace {

using namespace sealkeeper;
using fuzz::Require;

std::string LowerCased(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lowered;
}

std::string_view Part(std::string_view text, std::size_t begin, std::size_t end) {
    Require(begin < end && end <= text.size());
    return text.substr(begin, end - begin);
}

bool IsAt(std::string_view text, std::size_t offset, std::string_view word) {
    return offset < text.size() && LowerCased(text.substr(offset, word.size())) == word;
}

void CheckSections(std::string_view text, const ConfigOutline& outline) {
    std::size_t earliest = 0;
    for (const OutlinedSection& section : outline.sections) {
        Require(section.begin >= earliest && !section.name.empty());
        Require(IsAt(text, section.begin, section.name));
        Require(section.brace > section.begin && IsAt(text, section.brace, "{"));
        const bool isLast = &section == &outline.sections.back();
        const bool isOpen = section.closingBrace == kNoOffset;
        Require(isOpen == (isLast && outline.openSection != kNoIndex));
        Require(isOpen ||
                (section.closingBrace > section.brace && IsAt(text, section.closingBrace, "}")));
        earliest = section.closingBrace;
    }
    Require(outline.openSection == kNoIndex || outline.openSection + 1 == outline.sections.size());
}

void CheckKeys(std::string_view text, const ConfigOutline& outline) {
    std::size_t earliest = 0;
    for (const OutlinedKey& key : outline.keys) {
        Require(key.begin >= earliest && IsAt(text, key.begin, key.name) && !key.name.empty());
        const OutlinedSection& section = outline.sections.at(key.section);
        Require(section.brace < key.begin && key.begin < section.closingBrace);
        earliest = key.begin + key.name.size();
    }
    Require(outline.pendingKey == kNoIndex || outline.pendingKey + 1 == outline.keys.size());
}

// The texts between pairs of double quotes, empty ones included.
std::vector<std::string_view> QuotedParts(std::string_view text) {
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t opening = text.find('"');
        const std::size_t closing =
            opening == std::string_view::npos ? opening : text.find('"', opening + 1);
        if (closing == std::string_view::npos) {
            return parts;
        }
        parts.push_back(text.substr(opening + 1, closing - opening - 1));
        text.remove_prefix(closing + 1);
    }
}

void CheckTexts(std::string_view text, const OutlinedValue& value) {
    const std::string_view written = Part(text, value.begin, value.end);
    auto parts = QuotedParts(written);
    if (value.kind == ConfigValueKind::List) {
        std::erase(parts, std::string_view());
        Require(value.texts.size() == parts.size());
    }
    if (value.kind == ConfigValueKind::PairTable) {
        Require(value.texts.size() % 2 == 0 && value.texts.size() <= parts.size());
    }
    for (std::size_t i = 0; i < value.texts.size(); ++i) {
        const OutlinedText& part = value.texts[i];
        Require(part.begin > value.begin && part.begin <= part.end && part.end < value.end);
        Require(text.substr(part.begin, part.end - part.begin) == parts[i]);
        Require(text.data() + part.begin == parts[i].data());
        Require(part.text == UnescapeBackslashes(std::string(parts[i])));
    }
}

std::int64_t NumberAt(std::string_view text) {
    std::uint32_t number = 0;
    for (const char digit : text.substr(0, text.find_first_not_of("0123456789"))) {
        number = number * 10U + static_cast<std::uint32_t>(digit - '0');
    }
    return static_cast<std::int32_t>(number);
}

void CheckValue(std::string_view text, const OutlinedValue& value) {
    const std::string_view written = Part(text, value.begin, value.end);
    const char first = written.front();
    const char last = written.back();
    switch (value.kind) {
        case ConfigValueKind::List:
            Require(first == '[' && last == ']');
            break;
        case ConfigValueKind::PairTable:
            Require(first == '(' && last == ')');
            break;
        case ConfigValueKind::String:
            Require(first == '"' && last == '"' && value.texts.size() == 1);
            break;
        case ConfigValueKind::Number:
            Require(first >= '0' && first <= '9' && last == ';' && value.texts.empty());
            Require(value.number == NumberAt(written));
            break;
        case ConfigValueKind::Flag:
            Require(LowerCased(written) == (value.number == 1 ? "true" : "false"));
            break;
    }
    CheckTexts(text, value);
}

void CheckValues(std::string_view text, const ConfigOutline& outline) {
    std::size_t earliest = 0;
    for (const OutlinedValue& value : outline.values) {
        Require(value.begin >= earliest);
        const OutlinedSection& section = outline.sections.at(value.section);
        Require(section.brace < value.begin && value.begin < section.closingBrace);
        Require(outline.keys.at(value.key).begin < value.begin);
        CheckValue(text, value);
        earliest = value.end;
    }
}

void CheckComments(std::string_view text, const ConfigOutline& outline) {
    std::size_t earliest = 0;
    for (const OutlinedComment& comment : outline.comments) {
        Require(comment.begin >= earliest);
        const std::string_view written = Part(text, comment.begin, comment.end);
        Require(IsAt(text, comment.begin, "#") || IsAt(text, comment.begin, "//") ||
                comment.block == comment.begin);
        const bool hasBlock = comment.block != kNoOffset;
        Require(!hasBlock || (comment.block >= comment.begin && comment.block < comment.end &&
                              IsAt(text, comment.block, "/*")));
        Require(!comment.isClosed ||
                (hasBlock ? written.ends_with("*/") : IsAt(text, comment.end, "\n")));
        Require(comment.isClosed ||
                (&comment == &outline.comments.back() && comment.end == text.size()));
        for (const std::size_t inner : comment.innerBlocks) {
            Require(inner > comment.block && inner < comment.end && IsAt(text, inner, "/*"));
        }
        earliest = comment.end;
    }
}

void CheckEnd(std::string_view text, const ConfigOutline& outline, bool isParsed) {
    if (!outline.stop) {
        Require(isParsed);
        return;
    }
    Require(outline.stop->offset < text.size());
    Require(isParsed == (outline.stop->why != ConfigStop::LineFeedInElement));
}

template <typename Value>
using Held = std::map<std::string, Value>;

struct HeldSection {
    Held<bool> flags;
    Held<std::int64_t> integers;
    Held<std::string> strings;
    Held<StringList> stringLists;
    Held<StringPairs> stringPairTables;
};

void Hold(const OutlinedValue& value, bool isTrue, const std::string& key, HeldSection& held) {
    switch (value.kind) {
        case ConfigValueKind::List:
            for (const OutlinedText& element : value.texts) {
                held.stringLists[key].push_back(element.text);
            }
            held.stringLists.try_emplace(key);
            break;
        case ConfigValueKind::PairTable:
            for (std::size_t i = 0; i < value.texts.size(); i += 2) {
                held.stringPairTables[key].emplace(value.texts[i].text, value.texts[i + 1].text);
            }
            held.stringPairTables.try_emplace(key);
            break;
        case ConfigValueKind::String:
            held.strings[key] = value.texts.front().text;
            break;
        case ConfigValueKind::Number:
            held.integers[key] = value.number;
            held.flags[key] = isTrue;
            break;
        case ConfigValueKind::Flag:
            held.flags[key] = isTrue;
            break;
    }
}

// The content of each section according to the outline.
std::map<std::string, HeldSection> HeldSections(std::string_view text,
                                                const ConfigOutline& outline) {
    std::map<std::string, HeldSection> sections;
    for (const OutlinedValue& value : outline.values) {
        // The first digit of a number decides.
        const bool isTrue =
            value.kind == ConfigValueKind::Number ? text[value.begin] != '0' : value.number != 0;
        Hold(value, isTrue, outline.keys[value.key].name,
             sections[outline.sections[value.section].name]);
    }
    // A number without a semicolon still sets the flag.
    if (outline.stop && outline.stop->why == ConfigStop::NoSemicolon) {
        sections[outline.sections.at(outline.openSection).name]
            .flags[outline.keys.at(outline.pendingKey).name] = text[outline.stop->offset] != '0';
    }
    return sections;
}

template <typename Value>
void CheckTable(ConfigTable<Value>& table, const Held<Value>& held, const std::string& key) {
    const auto found = held.find(key);
    Require(table.Has(key) == (found != held.end()));
    Require(found == held.end() || table.Get(key) == found->second);
}

void CheckDocument(std::string_view text, const ConfigOutline& outline, ConfigDocument& document) {
    auto heldSections = HeldSections(text, outline);
    std::set<std::string> keys;
    for (const OutlinedKey& key : outline.keys) {
        keys.insert(key.name);
    }
    std::set<std::string> names;
    for (const OutlinedSection& outlined : outline.sections) {
        names.insert(outlined.name);
    }
    std::size_t values = 0;
    for (std::string name : names) {
        ConfigSection& section = document.GetSection(name);
        const HeldSection& held = heldSections[name];
        for (const std::string& key : keys) {
            CheckTable(section.flags, held.flags, key);
            CheckTable(section.integers, held.integers, key);
            CheckTable(section.strings, held.strings, key);
            CheckTable(section.stringLists, held.stringLists, key);
            CheckTable(section.stringPairTables, held.stringPairTables, key);
            values += ValuesOf(outline, name, key).size();
        }
    }
    Require(values == outline.values.size());
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Limited, because every section name is compared with every key.
    constexpr std::size_t kMostBytes = 8192;
    const std::string_view text(reinterpret_cast<const char*>(data), std::min(size, kMostBytes));
    ConfigDocument outlined;
    ConfigOutline outline;
    const bool isParsed = OutlineConfigText(text, outlined, outline);
    ConfigDocument plain;
    Require(plain.ParseConfigText(text) == isParsed);
    if (text.empty()) {
        Require(!isParsed && outline.sections.empty());
        return 0;
    }
    CheckSections(text, outline);
    CheckKeys(text, outline);
    CheckValues(text, outline);
    CheckComments(text, outline);
    CheckEnd(text, outline, isParsed);
    CheckDocument(text, outline, outlined);
    CheckDocument(text, outline, plain);
    return 0;
}
