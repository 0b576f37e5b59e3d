// Prints a parsed configuration on one line, so that a test compares all of it.
#ifndef SEALKEEPER_TESTS_CONFIG_CONFIG_DUMP_H
#define SEALKEEPER_TESTS_CONFIG_CONFIG_DUMP_H

#include <set>
#include <string>
#include <vector>

#include "config/config_document.h"

namespace sealkeeper::test {

// The tables cannot be enumerated, so a dump looks for these names.
inline const std::vector<std::string>& DumpedSections() {
    static const std::vector<std::string> names = {
        "s",  "t", "a", "a{", "s{", "}", "*/", "\vs", "\xC3\x84s", "config_info", "search_options",
        "s:", "l", "k"};
    return names;
}

inline const std::vector<std::string>& DumpedKeys() {
    static const std::vector<std::string> names = {
        "k",       "l",     "p",     "x",      "t",  "s",     "l=",   "k;",
        "k:",      "[",     "/x",    "K",      "=",  "\"v\"", "k//c", "k\xC3\x84",
        "version", "words", "pairs", "number", "on", "off",   "text", "other"};
    return names;
}

// "k!true" for a flag, "k=5" for an integer, "k'v'" for a string, "k[a|b]" for a string list and
// "k(x>1|y>2)" for a table of pairs.
inline std::vector<std::string> DumpEntries(ConfigSection& section) {
    std::vector<std::string> entries;
    for (const std::string& key : DumpedKeys()) {
        if (section.flags.Has(key)) {
            entries.push_back(key + (section.flags.Get(key) ? "!true" : "!false"));
        }
        if (section.integers.Has(key)) {
            entries.push_back(key + "=" + std::to_string(section.integers.Get(key)));
        }
        if (section.strings.Has(key)) {
            entries.push_back(key + "'" + section.strings.Get(key) + "'");
        }
        if (section.stringLists.Has(key)) {
            std::string elements;
            for (const std::string& element : section.stringLists.Get(key)) {
                elements += (elements.empty() ? "" : "|") + element;
            }
            entries.push_back(key + "[" + elements + "]");
        }
        if (section.stringPairTables.Has(key)) {
            std::string pairs;
            for (const auto& [name, value] : section.stringPairTables.Get(key)) {
                pairs += (pairs.empty() ? "" : "|") + name + ">" + value;
            }
            entries.push_back(key + "(" + pairs + ")");
        }
    }
    return entries;
}

// All look-ups of a missing section return the same one.
inline bool HasSection(ConfigDocument& document, std::string name) {
    std::string missing = "no such section";
    return &document.GetSection(name) != &document.GetSection(missing);
}

// Each section as "name{entries}".
inline std::string Dump(ConfigDocument& document) {
    std::string dump;
    for (std::string name : DumpedSections()) {
        if (!HasSection(document, name)) {
            continue;
        }
        std::string entries;
        for (const std::string& entry : DumpEntries(document.GetSection(name))) {
            entries += (entries.empty() ? "" : " ") + entry;
        }
        dump += (dump.empty() ? "" : " ") + name + "{" + entries + "}";
    }
    return dump;
}

// The dump after parsing `text`, with "false: " in front if parsing failed.
inline std::string ParsedDump(const std::string& text) {
    ConfigDocument document;
    const bool parsed = document.ParseConfigText(text);
    return (parsed ? "" : "false: ") + Dump(document);
}

// Every entry with its section, to compare what two texts have in common.
inline std::set<std::string> ParsedEntries(const std::string& text) {
    ConfigDocument document;
    static_cast<void>(document.ParseConfigText(text));
    std::set<std::string> entries;
    for (std::string name : DumpedSections()) {
        for (const std::string& entry : DumpEntries(document.GetSection(name))) {
            entries.insert(name + "." + entry);
        }
    }
    return entries;
}

}  // namespace sealkeeper::test

#endif
