#include "app/option_table.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace sealkeeper {
namespace {

constexpr std::array kOptions = {
    Option{"-incert", OptionKind::StoresText, &CommandLineOptions::certificateFile,
           "Parsed certificate filename: '%s'.\n"},
    Option{"-incrl", OptionKind::StoresText, &CommandLineOptions::crlFile,
           "Parsed certificate revocation list: '%s'.\n"},
    Option{"-inkey", OptionKind::StoresText, &CommandLineOptions::privateKeyFile,
           "Parsed private key filename: '%s'.\n"},
    Option{"-target_file", OptionKind::StoresText, &CommandLineOptions::targetFile,
           "Parsed target filename: '%s'.\n"},
    Option{"-outname", OptionKind::StoresText, &CommandLineOptions::outputName,
           "Parsed output catalogue filename: '%s'.\n"},
    Option{"-productid", OptionKind::StoresText, &CommandLineOptions::productId,
           "Parsed Nimbrel product id: '%s'.\n"},
    Option{"-target_game_dir", OptionKind::StoresText, &CommandLineOptions::targetGameDir,
           "Parsed target game directory: '%s'.\n"},
    Option{"verify", OptionKind::StoresText, &CommandLineOptions::verifyDir},
    Option{"list", OptionKind::StoresText, &CommandLineOptions::listPath},
    Option{"-jobs", OptionKind::SetsJobs},
    Option{"-gamedev", OptionKind::TurnsOnGameDevMode},
    Option{"-?", OptionKind::PrintsHelp},
    Option{"--help", OptionKind::PrintsHelp},
    Option{"--version", OptionKind::PrintsVersion},
    Option{"-v", OptionKind::TurnsOnVerbose},
};

std::size_t LeadingDashes(std::string_view text) {
    return std::min(text.find_first_not_of('-'), text.size());
}

// An exact name wins over longer names that begin with it.
const Option* FindExact(std::string_view name) {
    const auto found = std::find_if(kOptions.begin(), kOptions.end(),
                                    [name](const Option& option) { return option.name == name; });
    return found == kOptions.end() ? nullptr : &*found;
}

bool IsAbbreviationOf(std::string_view name, const Option& option) {
    return LeadingDashes(name) == LeadingDashes(option.name) && option.name.starts_with(name);
}

}  // namespace

MatchedArgument MatchArgument(std::string_view argument) {
    const bool hasDash = argument.starts_with('-');
    std::string_view name = argument;
    std::optional<std::string> attachedValue;
    if (const std::size_t equals = argument.find('=');
        hasDash && equals != std::string_view::npos) {
        name = argument.substr(0, equals);
        attachedValue = argument.substr(equals + 1);
    }

    if (const Option* option = FindExact(name); option != nullptr) {
        return {ArgumentKind::OptionName, option, attachedValue};
    }
    const auto abbreviates = [name](const Option& option) {
        return IsAbbreviationOf(name, option);
    };
    const auto candidates = std::count_if(kOptions.begin(), kOptions.end(), abbreviates);
    if (candidates == 1) {
        return {ArgumentKind::OptionName,
                &*std::find_if(kOptions.begin(), kOptions.end(), abbreviates), attachedValue};
    }
    if (candidates > 1 || hasDash) {
        return {ArgumentKind::Faulty};
    }
    return {ArgumentKind::Positional};
}

}  // namespace sealkeeper
