// Feeds any bytes to the lint of a configuration text. Warnings must point into the text, in order,
// and be safe to show. A text without warnings must be one that the tool accepts.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "app/console_log.h"
#include "app/terminal_text.h"
#include "config/catalogue_rules.h"
#include "config/config_document.h"
#include "config/config_outline.h"
#include "config/text_place.h"
#include "fuzzer.h"
#include "inspect/lint/lint_config_text.h"
#include "inspect/lint/plain_reading.h"
#include "inspect/rules/rule_places.h"
#include "inspect/tree/lexical_path.h"
#include "runtime/runtime_settings.h"

namespace {

using namespace sealkeeper;
using fuzz::Require;

auto Fields(const RuleWarning& warning) {
    return std::tie(warning.line, warning.column, warning.message, warning.cure);
}

bool AreSame(const RuleWarning& left, const RuleWarning& right) {
    return Fields(left) == Fields(right);
}

// Whether `place` is that of a byte of `text`. A line feed belongs to the line that it ends.
bool IsPlaceIn(const TextLines& lines, std::string_view text, TextPlace place) {
    std::size_t begin = 0;
    for (std::size_t line = 1; line < place.line; ++line) {
        begin = lines.LineEnd(begin) + 1;
        if (begin >= text.size()) {
            return false;
        }
    }
    return place.column > 0 && place.column - 1 < text.size() - begin &&
           begin + place.column - 1 <= lines.LineEnd(begin);
}

// Requires a whole sentence without control characters once it is escaped.
void CheckSentence(const std::string& sentence) {
    constexpr std::string_view kEnds = ".?!";
    Require(sentence.size() > 1 && kEnds.find(sentence.back()) != std::string_view::npos);
    const std::string shown = EscapeControls(sentence);
    for (std::string_view rest = shown; !rest.empty(); rest.remove_prefix(1)) {
        const auto byte = static_cast<unsigned char>(rest.front());
        Require(byte >= 0x20 && byte != 0x7F);
    }
}

void CheckWarnings(std::string_view text, const std::vector<RuleWarning>& warnings) {
    const TextLines lines(text);
    TextPlace last{0, 0};
    for (const RuleWarning& warning : warnings) {
        const TextPlace place{warning.line, warning.column};
        Require(std::tie(last.line, last.column) <= std::tie(place.line, place.column));
        Require(place == TextPlace{0, 0} || IsPlaceIn(lines, text, place));
        CheckSentence(warning.message);
        CheckSentence(warning.cure);
        last = place;
    }
}

struct Taken {
    bool isParsed = false;
    bool isGood = false;
    CatalogueConfig config;
};

// What generate makes of a text before it looks at the game.
Taken Take(std::string_view text) {
    ConfigDocument document;
    Taken taken;
    taken.isParsed = document.ParseConfigText(text);
    if (!taken.isParsed) {
        return taken;
    }
    std::string section = "search_options";
    RuntimeConfiguration settings;
    taken.isGood =
        CheckDocumentVersion(document) == ResultCode::Ok &&
        ReadCatalogueRules(document.GetSection(section), taken.config) == ResultCode::Ok &&
        LoadRuntimeSettings(settings, document);
    return taken;
}

void CheckPlaces(std::string_view text, const Taken& taken) {
    ConfigDocument document;
    ConfigOutline outline;
    if (!OutlineConfigText(text, document, outline) || !taken.isGood) {
        return;
    }
    const RulePlaces places = PlacesOfRules(text, outline);
    const CatalogueConfig& config = taken.config;
    const bool includes = !config.includePaths.empty();
    Require(places.patterns.size() ==
            (includes ? config.includePaths.size() : config.excludePaths.size()));
    Require(places.patterns.empty() ||
            places.patternKey == (includes ? "include_paths" : "exclude_paths"));
    for (const std::string& extension : config.excludedExtensions) {
        Require(places.extensions.contains(extension));
    }
    Require(places.aliases.size() == config.pathAliases.size());
    for (const auto& [name, value] : config.pathAliases) {
        Require(places.aliases.contains(name));
    }
}

void CheckLexicalPath(const std::string& path) {
    const std::string lexical = LexicalPath(path);
    Require(LexicalPath(lexical) == lexical && LexicalPath("./" + path + "/.") == lexical);
    Require(LeavesGame(lexical) == (lexical == ".." || lexical.starts_with("../")));
    Require(lexical.size() <= path.size() && !lexical.ends_with('/'));
    Require(lexical.find("//") == std::string::npos);
}

void CheckReading(std::string_view text) {
    Require(ReadPlainly(text).size() == text.size());
    const std::string without = WithoutComments(text);
    Require(without.size() == text.size());
    Require(std::count(without.begin(), without.end(), '\n') ==
            std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    g_logThreshold = LogLevel{0};
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::vector<RuleWarning> warnings = LintConfigText(text);
    // Elsewhere in memory, with a different byte past the end.
    const std::string copy = std::string(text) + '"';
    const std::vector<RuleWarning> again =
        LintConfigText(std::string_view(copy).substr(0, text.size()));
    Require(std::equal(warnings.begin(), warnings.end(), again.begin(), again.end(), AreSame));
    CheckWarnings(text, warnings);

    const Taken taken = Take(text);
    Require(taken.isGood || !warnings.empty());
    CheckPlaces(text, taken);
    CheckReading(text);
    for (const auto* const patterns : {&taken.config.includePaths, &taken.config.excludePaths}) {
        for (const std::string& pattern : *patterns) {
            CheckLexicalPath(pattern);
        }
    }
    return 0;
}
