#include "app/command_line_parser.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/console_log.h"
#include "app/job_count.h"
#include "app/option_table.h"
#include "app/usage_text.h"
#include "platform/file_system.h"
#include "platform/path_strings.h"

namespace sealkeeper {
namespace {

using Arguments = std::span<const char* const>;

struct ParsedArguments {
    std::vector<std::string> positionals;
    bool sawOption = false;
    // Help or version was asked for: nothing is left to do.
    bool isFinished = false;
};

ResultCode FailWithUsage() {
    PrintUsage(HelpText::Omitted);
    return ResultCode::SealkeeperUsageError;
}

ResultCode FailWithUsage(const char* message) {
    Log(LogLevel::Error, "%s\n", message);
    return FailWithUsage();
}

// The option's value: what follows its '=' or, failing that, the next argument, to which `index`
// then advances. Nothing when there is no next argument or it begins with a dash.
std::optional<std::string> TakeValue(const MatchedArgument& matched, Arguments arguments,
                                     std::size_t& index) {
    if (matched.attachedValue) {
        return matched.attachedValue;
    }
    if (index + 1 >= arguments.size() || std::string_view(arguments[index + 1]).starts_with('-')) {
        return std::nullopt;
    }
    return arguments[++index];
}

void StoreText(const Option& option, const std::string& value, CommandLineOptions& options) {
    options.*option.field = value;
    if (option.parsedMessage != nullptr) {
        // Every message of the option table has one "%s", for the value.
        Log(LogLevel::Info, option.parsedMessage, value.c_str());
    }
}

ResultCode ApplyOption(const MatchedArgument& matched, Arguments arguments, std::size_t& index,
                       CommandLineOptions& options, ParsedArguments& parsed) {
    const Option& option = *matched.option;
    if (!option.TakesValue() && matched.attachedValue) {
        return FailWithUsage();
    }
    switch (option.kind) {
        case OptionKind::PrintsHelp:
            PrintUsage(HelpText::Included);
            parsed.isFinished = true;
            return ResultCode::Ok;
        case OptionKind::PrintsVersion:
            // The banner is the version output.
            parsed.isFinished = true;
            return ResultCode::Ok;
        case OptionKind::TurnsOnGameDevMode:
            options.gameDevMode = true;
            break;
        case OptionKind::TurnsOnVerbose:
            g_logThreshold = LogLevel::Verbose;
            break;
        case OptionKind::StoresText: {
            const auto value = TakeValue(matched, arguments, index);
            if (!value) {
                return FailWithUsage();
            }
            StoreText(option, *value, options);
            break;
        }
        case OptionKind::SetsJobs: {
            const auto value = TakeValue(matched, arguments, index);
            const auto jobs = value ? JobsFrom(*value) : std::nullopt;
            if (!jobs) {
                return FailWithUsage();
            }
            options.jobs = *jobs;
            break;
        }
    }
    parsed.sawOption = true;
    return ResultCode::Ok;
}

// Parses the arguments, up to the first error or the first request for help or version.
ResultCode ParseArguments(Arguments arguments, CommandLineOptions& options,
                          ParsedArguments& parsed) {
    for (std::size_t index = 1; index < arguments.size() && !parsed.isFinished; ++index) {
        const MatchedArgument matched = MatchArgument(arguments[index]);
        switch (matched.kind) {
            case ArgumentKind::Faulty:
                return FailWithUsage();
            case ArgumentKind::Positional:
                parsed.positionals.emplace_back(arguments[index]);
                break;
            case ArgumentKind::OptionName: {
                const ResultCode code = ApplyOption(matched, arguments, index, options, parsed);
                if (code != ResultCode::Ok) {
                    return code;
                }
                break;
            }
        }
    }
    return ResultCode::Ok;
}

ResultCode ResolveInto(std::string& path) {
    const auto resolved = ResolvePath(path);
    if (!resolved) {
        Log(LogLevel::Error,
            "The provided working directory path couldn't be resolved, please make sure it's a valid path: '%s'.\n",
            path.c_str());
        return FailWithUsage();
    }
    path = *resolved;
    return ResultCode::Ok;
}

ResultCode ChooseList(CommandLineOptions& options) {
    options.action = ActionKind::List;
    return ResolveInto(options.listPath);
}

ResultCode ChooseGenerate(const std::vector<std::string>& positionals,
                          CommandLineOptions& options) {
    if (options.targetGameDir.empty()) {
        return FailWithUsage(
            "target_game_dir argument must be specified as either absolute or relative path for the signed files generation.");
    }
    if (positionals.size() > 1) {
        return FailWithUsage();
    }
    if (!positionals.empty()) {
        if (!options.targetFile.empty()) {
            return FailWithUsage("target_file and config_file arguments cannot be used together.");
        }
        options.configFile = positionals.front();
    }
    options.action = ActionKind::Generate;
    return ResultCode::Ok;
}

ResultCode ChooseVerify(CommandLineOptions& options) {
    if (const ResultCode code = ResolveInto(options.verifyDir); code != ResultCode::Ok) {
        return code;
    }
    EnsureTrailingSlash(options.verifyDir);
    options.action = ActionKind::Verify;
    return ResultCode::Ok;
}

ResultCode ChooseAction(const ParsedArguments& parsed, CommandLineOptions& options) {
    if (!parsed.sawOption) {
        return FailWithUsage();
    }
    if (!options.verifyDir.empty() && !options.listPath.empty()) {
        return FailWithUsage("Verify and List arguments cannot be used together.");
    }
    if (!options.listPath.empty()) {
        return ChooseList(options);
    }
    if (options.productId.empty()) {
        // Deliberately without the usage text.
        Log(LogLevel::Error, "ProductId argument must be specified.\n");
        return ResultCode::SealkeeperUsageError;
    }
    if (options.verifyDir.empty()) {
        return ChooseGenerate(parsed.positionals, options);
    }
    return ChooseVerify(options);
}

}  // namespace

ResultCode ParseCommandLine(CommandLineOptions& options, int argc, const char* const* argv) {
    const Arguments arguments(argv, static_cast<std::size_t>(argc));
    ParsedArguments parsed;
    if (const ResultCode code = ParseArguments(arguments, options, parsed);
        code != ResultCode::Ok) {
        return code;
    }
    if (parsed.isFinished) {
        return ResultCode::Ok;
    }
    options.programPath = arguments.empty() ? "" : arguments.front();
    return ChooseAction(parsed, options);
}

}  // namespace sealkeeper
