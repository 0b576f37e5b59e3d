#include "app/program.h"

#include <new>

#include "app/command_line_parser.h"
#include "app/console_log.h"
#include "app/generate_action.h"
#include "app/list_action.h"
#include "app/verify_action.h"
#include "platform/output_signals.h"
#include "platform/standard_descriptors.h"
#include "runtime/mbedtls_compat.h"

namespace sealkeeper {
namespace {

ResultCode ParseAndRun(int argc, const char* const* argv) {
    if (!InitialiseMbedTls()) {
        Log(LogLevel::Error, "The cryptographic library could not be initialised.\n");
        return ResultCode::MbedTlsRandNumGenError;
    }
    CommandLineOptions& options = GetCommandLineOptions();
    if (const ResultCode code = ParseCommandLine(options, argc, argv); code != ResultCode::Ok) {
        return code;
    }
    return RunAction(options);
}

}  // namespace

void PrintBanner() {
    WriteUntagged("Anti-Cheat Sealkeeper v" SEALKEEPER_VERSION
                  " (for game developers only, must not be shipped to players)\n\n");
}

void PrintArguments(int argc, const char* const* argv) {
    Log(LogLevel::Info, "Provided command line arguments:\n");
    for (int i = 0; i < argc; ++i) {
        Log(LogLevel::Info, "    arg[%i]: %s\n", i, argv[i]);
    }
}

ResultCode RunAction(CommandLineOptions& options) {
    switch (options.action) {
        case ActionKind::None:
            return ResultCode::Ok;
        case ActionKind::Generate:
            return RunGenerateAction(options);
        case ActionKind::List:
            return RunListAction(options);
        case ActionKind::Verify:
            return RunVerifyAction(options);
    }
    // Deliberately shown as information.
    Log(LogLevel::Info, "Unrecognized action requested: %u.\n",
        static_cast<unsigned>(options.action));
    return ResultCode::SealkeeperHashtoolGenericError;
}

int ReportOutOfMemory() {
    Log(LogLevel::Error, "Out of memory.\n");
    return ResultCodeNumber(ResultCode::SealkeeperHashtoolGenericError);
}

int RunProgram(int argc, const char* const* argv) {
    OpenMissingStandardDescriptors();
    IgnoreOutputSignals();
    try {
        PrintBanner();
        PrintArguments(argc, argv);
        return ResultCodeNumber(ParseAndRun(argc, argv));
    } catch (const std::bad_alloc&) {
        return ReportOutOfMemory();
    }
}

}  // namespace sealkeeper
