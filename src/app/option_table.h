// The options that the command line knows, and how one argument is matched with them.
#ifndef SEALKEEPER_APP_OPTION_TABLE_H
#define SEALKEEPER_APP_OPTION_TABLE_H

#include <optional>
#include <string>
#include <string_view>

#include "app/command_line_options.h"

namespace sealkeeper {

enum class OptionKind {
    StoresText,
    SetsJobs,
    TurnsOnGameDevMode,
    TurnsOnVerbose,
    PrintsHelp,
    PrintsVersion
};

struct Option {
    std::string_view name;
    OptionKind kind;
    // Where the value goes; only for `StoresText`.
    std::string CommandLineOptions::*field = nullptr;
    // Logged with the value; null when nothing is said.
    const char* parsedMessage = nullptr;

    [[nodiscard]] bool TakesValue() const {
        return kind == OptionKind::StoresText || kind == OptionKind::SetsJobs;
    }
};

enum class ArgumentKind { OptionName, Positional, Faulty };

struct MatchedArgument {
    ArgumentKind kind;
    // Set for `OptionName`.
    const Option* option = nullptr;
    // What stood behind the first '='; nothing when there was none.
    std::optional<std::string> attachedValue = std::nullopt;
};

// Matches `argument` by its exact name or by a proper prefix of exactly one name. Faulty is a
// prefix of several names, and what begins with a dash and is no option.
[[nodiscard]] MatchedArgument MatchArgument(std::string_view argument);

}  // namespace sealkeeper

#endif
