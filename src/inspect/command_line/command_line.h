// The command line of the companion. It hides CLI11, whose headers take longer to compile than most
// of the program.
#ifndef SEALKEEPER_INSPECT_COMMAND_LINE_COMMAND_LINE_H
#define SEALKEEPER_INSPECT_COMMAND_LINE_COMMAND_LINE_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "inspect/report/console.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace sealkeeper {

// An option with a value: "--key", "FILE", and its meaning.
struct ValueOption {
    const char* name;
    const char* valueName;
    const char* meaning;
};

// Returns what is wrong with a value, such as "'-1' is not a whole number"; empty if it is valid.
using ValueFault = std::string (*)(const std::string& value);

// The options of one command. The variables for their values must live until the command line has
// run. What a text or number holds beforehand is its default, and the help shows it.
class Command {
  public:
    Command(CLI::App& app, int& status);

    // A required positional argument.
    void AddOperand(const char* name, const char* meaning, std::string& value);
    void AddFlag(const char* name, const char* meaning, bool& value);
    void AddRequiredText(const ValueOption& option, std::string& value, ValueFault fault = nullptr);
    void AddText(const ValueOption& option, std::string& value, ValueFault fault = nullptr);
    void AddText(const ValueOption& option, std::optional<std::string>& value,
                 ValueFault fault = nullptr);
    // Must be one of `choices`.
    void AddChoice(const ValueOption& option, const std::vector<std::string>& choices,
                   std::string& value);
    // A decimal number from 0 to `most`.
    void AddNumber(const ValueOption& option, std::uint64_t most, std::uint64_t& value);
    void AddNumber(const ValueOption& option, std::uint64_t most,
                   std::optional<std::uint64_t>& value);

    // Makes `name` and `other` mutually exclusive. Both must have been added.
    void Exclude(const char* name, const char* other);

    // Calls `run` if the command line names this command. Its result is the exit status.
    void SetRun(std::function<int()> run);

  private:
    CLI::Option& AddParsedNumber(const ValueOption& option, std::uint64_t most,
                                 std::function<void(std::uint64_t)> store);

    CLI::App* app_;
    int* status_;
};

class CommandLine {
  public:
    CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    // Options may be added to the returned command until `Run`.
    [[nodiscard]] Command AddCommand(const char* name, const char* meaning);

    // Runs the command that the command line names and returns its status. Answers calls for help
    // itself. Returns kUsageStatus, with the reason on standard error, if the arguments are wrong.
    [[nodiscard]] int Run(int argc, const char* const* argv, Console& console);

  private:
    std::unique_ptr<CLI::App> app_;
    int status_ = 0;
};

}  // namespace sealkeeper

#endif
