// Feeds any bytes as a configuration text. What was read, written out plainly, must read the same,
// and so must the rules and settings that the program makes of it, which must keep their limits.
#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "app/console_log.h"
#include "config/catalogue_rules.h"
#include "config/config_document.h"
#include "fuzzer.h"
#include "runtime/anti_tamper_solutions.h"
#include "runtime/runtime_settings.h"

namespace {

using namespace sealkeeper;

using Names = std::set<std::string>;

constexpr std::uint32_t kLastAntiTamperSolution = 8;

// The names of sections and keys to look up, because a document cannot list its own: those that the
// program uses, and the words of the text. Anything else in a document is not checked.
Names NamesIn(std::string_view text) {
    Names names = {"config_info",
                   "version",
                   "search_options",
                   "include_paths",
                   "exclude_paths",
                   "exclude_extensions",
                   "exclude_size_threshold",
                   "alias_paths",
                   "ignore_files_without_extension",
                   "working_directory",
                   "runtime_configuration",
                   "max_active_game_instances",
                   "anti_tamper_solution_name",
                   "crash_reporter_name"};
    constexpr std::string_view kBetweenWords = " \t\n\r:=;{}[]()\"";
    constexpr std::size_t kMaxNames = 64;
    while (!text.empty() && names.size() < kMaxNames) {
        std::string word(text.substr(0, text.find_first_of(kBetweenWords)));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        std::transform(word.begin(), word.end(), word.begin(), [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        });
        if (!word.empty()) {
            names.insert(word);
        }
    }
    return names;
}

// A value in quotes. No value may have two backslashes in a row.
std::string Quoted(const std::string& text) {
    fuzz::Require(text.find("\\\\") == std::string::npos);
    return '"' + text + '"';
}

// Everything in `section` under `key`, with lists repeated `listRepetitions` times. The number goes
// first, because it also sets the flag.
std::string EntriesOf(ConfigSection& section, const std::string& key, int listRepetitions) {
    std::string entries;
    const auto add = [&entries, &key](const std::string& value) {
        entries += key + " = " + value + "\n";
    };
    if (section.integers.Has(key)) {
        add(std::to_string(static_cast<std::uint32_t>(section.integers.Get(key))) + ";");
    }
    if (section.flags.Has(key)) {
        add(section.flags.Get(key) ? "true" : "false");
    }
    if (section.strings.Has(key)) {
        add(Quoted(section.strings.Get(key)));
    }
    if (section.stringLists.Has(key)) {
        std::string list;
        for (const std::string& element : section.stringLists.Get(key)) {
            list += Quoted(element) + ", ";
        }
        std::string lists;
        for (int i = 0; i < listRepetitions; ++i) {
            lists += list;
        }
        add("[ " + lists + "]");
    }
    if (section.stringPairTables.Has(key)) {
        std::string pairs = "( ";
        for (const auto& [name, value] : section.stringPairTables.Get(key)) {
            pairs += "[" + Quoted(name) + ", " + Quoted(value) + "], ";
        }
        add(pairs + ");");
    }
    return entries;
}

// The content of `document` as a configuration text.
std::string TextOf(ConfigDocument& document, const Names& names, int listRepetitions = 1) {
    // All missing sections are the same object.
    std::string missingName = "\n";
    const ConfigSection* const missing = &document.GetSection(missingName);
    std::string text;
    for (std::string sectionName : names) {
        ConfigSection& section = document.GetSection(sectionName);
        if (&section == missing) {
            continue;
        }
        text += sectionName + " {\n";
        for (const std::string& key : names) {
            text += EntriesOf(section, key, listRepetitions);
        }
        // The last byte of a text never starts a token, so it must not be the brace.
        text += "}\n\n";
    }
    return text;
}

struct Rules {
    ResultCode code = ResultCode::Ok;
    CatalogueConfig config;
};

Rules RulesOf(ConfigDocument& document) {
    std::string name = "search_options";
    Rules rules;
    rules.code = ReadCatalogueRules(document.GetSection(name), rules.config);
    return rules;
}

auto Fields(const Rules& rules) {
    const CatalogueConfig& config = rules.config;
    return std::tie(rules.code, config.sizeThresholdBytes, config.includePaths, config.excludePaths,
                    config.excludedExtensions, config.pathAliases,
                    config.skipFilesWithoutExtension);
}

bool StaysInside(const std::string& path) {
    return path.find("..") == std::string::npos && path.find(':') == std::string::npos &&
           path.find('\\') == std::string::npos;
}

void CheckRules(const Rules& rules) {
    if (rules.code != ResultCode::Ok) {
        fuzz::Require(rules.code == ResultCode::InitFailedConfig);
        return;
    }
    const CatalogueConfig& config = rules.config;
    fuzz::Require(config.includePaths.empty() || config.excludePaths.empty());
    const auto bytes = static_cast<std::int64_t>(config.sizeThresholdBytes);
    constexpr auto kMegabyte = static_cast<std::int64_t>(kBytesPerMegabyte);
    fuzz::Require(bytes % kMegabyte == 0);
    fuzz::Require(bytes / kMegabyte == static_cast<std::int32_t>(bytes / kMegabyte));
    for (const auto& [name, value] : config.pathAliases) {
        fuzz::Require(StaysInside(name) && StaysInside(value));
    }
}

struct Settings {
    bool isLoaded = false;
    RuntimeConfiguration configuration;
};

Settings SettingsOf(ConfigDocument& document) {
    Settings settings;
    settings.isLoaded = LoadRuntimeSettings(settings.configuration, document);
    return settings;
}

auto Fields(const Settings& settings) {
    const RuntimeConfiguration& configuration = settings.configuration;
    return std::tie(settings.isLoaded, configuration.version, configuration.maxActiveInstances,
                    configuration.crashReporterName, configuration.antiTamperSolution);
}

void CheckSettings(const Settings& settings) {
    const RuntimeConfiguration& configuration = settings.configuration;
    fuzz::Require(configuration.version == kRuntimeConfigurationVersion);
    fuzz::Require(configuration.antiTamperSolution <= kLastAntiTamperSolution);
    fuzz::Require(settings.isLoaded || configuration.antiTamperSolution == kNoAntiTamperSolution);
    const auto& name = configuration.crashReporterName;
    const auto end = std::find(name.begin(), name.end(), '\0');
    fuzz::Require(std::all_of(end, name.end(), [](char byte) { return byte == '\0'; }));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    g_logThreshold = LogLevel{0};
    const std::string text(data, data + size);
    ConfigDocument document;
    if (!document.ParseConfigText(text)) {
        fuzz::Require(text.empty() || text.find('\n') != std::string::npos);
        return 0;
    }
    const Names names = NamesIn(text);
    const std::string written = TextOf(document, names);
    ConfigDocument again;
    fuzz::Require(again.ParseConfigText(written) == !written.empty());
    fuzz::Require(TextOf(again, names) == written);

    const Rules rules = RulesOf(document);
    CheckRules(rules);
    fuzz::Require(Fields(RulesOf(again)) == Fields(rules));
    const Settings settings = SettingsOf(document);
    CheckSettings(settings);
    fuzz::Require(Fields(SettingsOf(again)) == Fields(settings));

    // Parsing the same text again adds to the lists and changes nothing else.
    const std::string withDoubledLists = TextOf(document, names, 2);
    fuzz::Require(document.ParseConfigText(text));
    fuzz::Require(TextOf(document, names) == withDoubledLists);
    return 0;
}
