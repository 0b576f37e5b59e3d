#include "inspect/inspect_program.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "inspect/check/check_command.h"
#include "inspect/credentials/credentials_command.h"
#include "inspect/credentials/trust_command.h"
#include "inspect/report/command_status.h"
#include "inspect/report/console.h"
#include "inspect/rules/rules_command.h"
#include "inspect/show/compare_command.h"
#include "inspect/show/show_command.h"
#include "platform/output_signals.h"
#include "platform/standard_descriptors.h"
#include "runtime/mbedtls_compat.h"

namespace sealkeeper {
namespace {

// The first option that no command has; empty where there is none. The library would rather say
// which required one is missing.
std::string UnknownOption(const CLI::App& program) {
    for (const std::string& argument : program.remaining(true)) {
        if (argument.starts_with("-")) {
            return argument;
        }
    }
    return {};
}

// What `error` means for the exit status. A call for help is none, and was answered here.
int AnswerParseError(const CLI::App& program, const CLI::ParseError& error, Console& console) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        return program.exit(error) == 0 ? kStatusGood : kUsageStatus;
    }
    const std::string unknown = UnknownOption(program);
    console.Fail((unknown.empty() ? error.what() : "unknown option: " + unknown) + " (see --help)");
    return kUsageStatus;
}

int ParseAndRun(int argc, const char* const* argv, Console& console) {
    int status = kStatusGood;
    CLI::App program(
        "Say what sealkeeper hashes and why, whether its files and credentials are good, and what they hold.",
        "sealkeeper-inspect");
    program.set_version_flag("--version", "sealkeeper-inspect " SEALKEEPER_VERSION);
    AddCheckCommand(program, console, status);
    AddCompareCommand(program, console, status);
    AddCredentialsCommand(program, console, status);
    AddRulesCommand(program, console, status);
    AddShowCommand(program, console, status);
    AddTrustCommand(program, console, status);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return AnswerParseError(program, error, console);
    }
    // Asked here and not of the library, which would not say what was typed in place of one.
    if (program.get_subcommands().empty()) {
        console.Fail("a command is required (see --help)");
        return kUsageStatus;
    }
    return status;
}

// Not by the console, which takes memory.
void SayOutOfMemory() {
    std::fputs("sealkeeper-inspect: out of memory\n", stderr);
}

// nlohmann-json takes memory where it frees a document, from which no exception comes out.
[[noreturn]] void EndForWantOfMemory() {
    try {
        std::rethrow_exception(std::current_exception());
    } catch (const std::bad_alloc&) {
        SayOutOfMemory();
        std::_Exit(kStatusError);
    } catch (...) {
        std::abort();
    }
}

int StartAndRun(int argc, const char* const* argv) {
    Console console;
    if (!InitialiseMbedTls()) {
        console.Fail("the cryptographic library could not be initialised");
        return kStatusError;
    }
    const int status = ParseAndRun(argc, argv, console);
    // A report that nobody got is no good one.
    return console.Finish() || status != kStatusGood ? status : kStatusError;
}

}  // namespace

int RunInspectProgram(int argc, const char* const* argv) {
    OpenMissingStandardDescriptors();
    IgnoreOutputSignals();
    KeepLogQuiet();
    std::set_terminate(EndForWantOfMemory);
    try {
        return StartAndRun(argc, argv);
    } catch (const std::bad_alloc&) {
        SayOutOfMemory();
        return kStatusError;
    }
}

}  // namespace sealkeeper
