#include "inspect/command_line/command_line.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <sstream>
#include <system_error>
#include <utility>

#include "inspect/report/command_status.h"

namespace sealkeeper {
namespace {

std::optional<std::uint64_t> NumberUpTo(std::uint64_t most, const std::string& text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data(), end, number);
    const bool isNumber = fault == std::errc{} && stop == end;
    return isNumber && number <= most ? std::optional(number) : std::nullopt;
}

std::string NumberFault(std::uint64_t most, const std::string& text) {
    return NumberUpTo(most, text)
               ? ""
               : "'" + text + "' is not a whole number from 0 to " + std::to_string(most);
}

// The first option that no command knows; empty if there is none. CLI11 would instead report a
// missing required option.
std::string UnknownOption(const CLI::App& app) {
    for (const std::string& argument : app.remaining(true)) {
        if (argument.starts_with("-")) {
            return argument;
        }
    }
    return {};
}

// The exit status for `error`. A call for help or the version is no failure.
int AnswerParseError(const CLI::App& app, const CLI::ParseError& error, Console& console) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        std::ostringstream answer;
        app.exit(error, answer);
        console.Write(answer.str());
        return kStatusGood;
    }
    const std::string unknown = UnknownOption(app);
    console.Fail((unknown.empty() ? error.what() : "unknown option: " + unknown) + " (see --help)");
    return kUsageStatus;
}

}  // namespace

Command::Command(CLI::App& app, int& status) : app_(&app), status_(&status) {}

void Command::AddOperand(const char* name, const char* meaning, std::string& value) {
    app_->add_option(name, value, meaning)->type_name("")->required();
}

void Command::AddFlag(const char* name, const char* meaning, bool& value) {
    app_->add_flag(name, value, meaning);
}

void Command::AddRequiredText(const ValueOption& option, std::string& value, ValueFault fault) {
    AddText(option, value, fault);
    app_->get_option(option.name)->required();
}

void Command::AddText(const ValueOption& option, std::string& value, ValueFault fault) {
    CLI::Option* const added = app_->add_option(option.name, value, option.meaning);
    added->type_name(option.valueName);
    if (!value.empty()) {
        added->capture_default_str();
    }
    if (fault != nullptr) {
        added->check(fault);
    }
}

void Command::AddText(const ValueOption& option, std::optional<std::string>& value,
                      ValueFault fault) {
    CLI::Option* const added = app_->add_option(option.name, value, option.meaning);
    added->type_name(option.valueName);
    if (fault != nullptr) {
        added->check(fault);
    }
}

void Command::AddChoice(const ValueOption& option, const std::vector<std::string>& choices,
                        std::string& value) {
    app_->add_option(option.name, value, option.meaning)
        ->capture_default_str()
        ->check(CLI::IsMember(choices))
        ->type_name(option.valueName);
}

CLI::Option& Command::AddParsedNumber(const ValueOption& option, std::uint64_t most,
                                      std::function<void(std::uint64_t)> store) {
    return *app_->add_option_function<std::string>(
                    option.name,
                    [most, store = std::move(store)](const std::string& text) {
                        store(NumberUpTo(most, text).value_or(0));
                    },
                    option.meaning)
                ->check([most](const std::string& text) { return NumberFault(most, text); })
                ->type_name(option.valueName);
}

void Command::AddNumber(const ValueOption& option, std::uint64_t most, std::uint64_t& value) {
    AddParsedNumber(option, most, [&value](std::uint64_t number) {
        value = number;
    }).default_str(std::to_string(value));
}

void Command::AddNumber(const ValueOption& option, std::uint64_t most,
                        std::optional<std::uint64_t>& value) {
    AddParsedNumber(option, most, [&value](std::uint64_t number) { value = number; });
}

void Command::Exclude(const char* name, const char* other) {
    app_->get_option(name)->excludes(other);
}

void Command::SetRun(std::function<int()> run) {
    app_->callback([status = status_, run = std::move(run)] { *status = run(); });
}

CommandLine::CommandLine()
    : app_(std::make_unique<CLI::App>(
          "Say what sealkeeper hashes and why, whether its files and credentials are good, and what they hold.",
          "sealkeeper-inspect")) {
    app_->set_version_flag("--version", "sealkeeper-inspect " SEALKEEPER_VERSION);
}

CommandLine::~CommandLine() = default;

Command CommandLine::AddCommand(const char* name, const char* meaning) {
    return Command(*app_->add_subcommand(name, meaning), status_);
}

int CommandLine::Run(int argc, const char* const* argv, Console& console) {
    try {
        app_->parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return AnswerParseError(*app_, error, console);
    }
    // Checked here because CLI11's own check would hide what was typed instead of a command.
    if (app_->get_subcommands().empty()) {
        console.Fail("a command is required (see --help)");
        return kUsageStatus;
    }
    return status_;
}

}  // namespace sealkeeper
