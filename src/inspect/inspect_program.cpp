#include "inspect/inspect_program.h"

#include <cstdio>
#include <new>

#include "inspect/check/check_command.h"
#include "inspect/command_line/command_line.h"
#include "inspect/credentials/credentials_command.h"
#include "inspect/credentials/trust_command.h"
#include "inspect/report/command_status.h"
#include "inspect/report/console.h"
#include "inspect/report/logged_error.h"
#include "inspect/rules/rules_command.h"
#include "inspect/show/compare_command.h"
#include "inspect/show/show_command.h"
#include "platform/output_signals.h"
#include "platform/standard_descriptors.h"
#include "runtime/mbedtls_compat.h"

namespace sealkeeper {
namespace {

int RunCommand(int argc, const char* const* argv, Console& console) {
    CommandLine commandLine;
    AddCheckCommand(commandLine, console);
    AddCompareCommand(commandLine, console);
    AddCredentialsCommand(commandLine, console);
    AddRulesCommand(commandLine, console);
    AddShowCommand(commandLine, console);
    AddTrustCommand(commandLine, console);
    return commandLine.Run(argc, argv, console);
}

int StartAndRun(int argc, const char* const* argv) {
    Console console;
    if (!InitialiseMbedTls()) {
        console.Fail("the cryptographic library could not be initialised");
        return kStatusError;
    }
    const int status = RunCommand(argc, argv, console);
    // A report that could not be written is an error, even if all else is well.
    const bool isLost = !console.Finish();
    return isLost && status <= kStatusWarning ? kStatusError : status;
}

}  // namespace

// Not through the console, which allocates.
int SayOutOfMemory() {
    std::fputs("sealkeeper-inspect: out of memory\n", stderr);
    return kStatusError;
}

int RunInspectProgram(int argc, const char* const* argv) {
    OpenMissingStandardDescriptors();
    IgnoreOutputSignals();
    KeepLogQuiet();
    try {
        return StartAndRun(argc, argv);
    } catch (const std::bad_alloc&) {
        return SayOutOfMemory();
    }
}

}  // namespace sealkeeper
