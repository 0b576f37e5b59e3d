// The options of the command line, and how an argument is matched against them.
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
    // Where the value is stored; only for `StoresText`.
    std::string CommandLineOptions::*field = nullptr;
    // Logged with the value; null when nothing is logged.
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
    // What follows the first '='; nothing when there is none.
    std::optional<std::string> attachedValue = std::nullopt;
};

// Matches `argument` by its exact name or by a proper prefix of exactly one name. `Faulty` is a
// prefix of several names, or something that begins with a dash and is not an option. Anything else
// is `Positional`.
[[nodiscard]] MatchedArgument MatchArgument(std::string_view argument);

}  // namespace sealkeeper

#endif
