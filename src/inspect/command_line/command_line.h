// The command line of the companion. CLI11, which parses it, stays behind this: its headers take
// longer to compile than most of the program.
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

// An option that has a value: "--key", "FILE", and what it means.
struct ValueOption {
    const char* name;
    const char* valueName;
    const char* meaning;
};

// What is wrong with a value, as "'-1' is not a whole number"; empty where it will do.
using ValueFault = std::string (*)(const std::string& value);

// The options of one command. Where their values go must live until the command line was run. A
// text or a number that is there before is the default, which the help shows.
class Command {
  public:
    Command(CLI::App& app, int& status);

    // The next argument that is no option. There must be one.
    void AddOperand(const char* name, const char* meaning, std::string& value);
    void AddFlag(const char* name, const char* meaning, bool& value);
    void AddRequiredText(const ValueOption& option, std::string& value, ValueFault fault = nullptr);
    void AddText(const ValueOption& option, std::string& value, ValueFault fault = nullptr);
    void AddText(const ValueOption& option, std::optional<std::string>& value);
    // One of `choices`.
    void AddChoice(const ValueOption& option, const std::vector<std::string>& choices,
                   std::string& value);
    // Decimal, from 0 to `most`.
    void AddNumber(const ValueOption& option, std::uint64_t most, std::uint64_t& value);
    void AddNumber(const ValueOption& option, std::uint64_t most,
                   std::optional<std::uint64_t>& value);

    // Refuses `name` beside `other`; both were added.
    void Exclude(const char* name, const char* other);

    // Calls `run` when this command was asked for. What it returns is the exit status.
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

    // What is added to the command that is returned is known by the time of `Run`.
    [[nodiscard]] Command AddCommand(const char* name, const char* meaning);

    // Runs the command that was asked for and returns its status. Answers calls for help itself.
    // Returns kUsageStatus, with the reason on standard error, when the arguments are wrong.
    [[nodiscard]] int Run(int argc, const char* const* argv, Console& console);

  private:
    std::unique_ptr<CLI::App> app_;
    int status_ = 0;
};

}  // namespace sealkeeper

#endif
