// Feeds any lines as the arguments of a command line, which is parsed but not run.
#include <string>
#include <tuple>
#include <vector>

#include "app/command_line_parser.h"
#include "app/console_log.h"
#include "app/program.h"
#include "fuzzer.h"

namespace {

using namespace sealkeeper;

using Arguments = std::vector<std::string>;

Arguments LinesOf(const std::uint8_t* data, std::size_t size) {
    Arguments lines = {"sealkeeper"};
    if (size > 0) {
        lines.emplace_back();
    }
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            lines.emplace_back();
        } else if (data[i] != 0) {
            // Arguments of a process contain no zero byte.
            lines.back().push_back(static_cast<char>(data[i]));
        }
    }
    return lines;
}

ResultCode Parse(const Arguments& arguments, CommandLineOptions& options) {
    std::vector<const char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(argument.c_str());
    }
    const int count = static_cast<int>(pointers.size());
    g_logThreshold = LogLevel::Info;
    PrintArguments(count, pointers.data());
    const ResultCode code = ParseCommandLine(options, count, pointers.data());
    fuzz::Require(g_logThreshold == LogLevel::Info || g_logThreshold == LogLevel::Verbose);
    return code;
}

// Whether help or the version was asked for; the shortest forms are "-?", "--h" and "--v".
bool AsksToPrint(const Arguments& arguments) {
    for (const std::string& argument : arguments) {
        if (argument == "-?" || argument.starts_with("--h") || argument.starts_with("--v")) {
            return true;
        }
    }
    return false;
}

// Checks what the actions rely on.
void CheckOptions(const CommandLineOptions& options, const Arguments& arguments) {
    fuzz::Require(options.jobs >= 1 && options.jobs <= 256);
    switch (options.action) {
        case ActionKind::None:
            fuzz::Require(AsksToPrint(arguments));
            return;
        case ActionKind::Generate:
            fuzz::Require(!options.productId.empty() && !options.targetGameDir.empty());
            fuzz::Require(options.listPath.empty() && options.verifyDir.empty());
            break;
        case ActionKind::List:
            fuzz::Require(options.listPath.starts_with('/') && options.verifyDir.empty());
            break;
        case ActionKind::Verify:
            fuzz::Require(!options.productId.empty() && options.listPath.empty());
            fuzz::Require(options.verifyDir.starts_with('/') && options.verifyDir.ends_with('/'));
            break;
    }
    fuzz::Require(options.programPath == arguments.front());
}

// Everything that a command line sets except the product id.
auto OtherOptions(const CommandLineOptions& options) {
    return std::tie(options.action, options.privateKeyFile, options.certificateFile,
                    options.configFile, options.gameDevMode, options.outputName, options.crlFile,
                    options.targetFile, options.targetGameDir, options.listPath, options.verifyDir,
                    options.jobs, options.programPath);
}

// The last value of an option wins, in either form, and changes nothing else.
void CheckLastValueWins(const CommandLineOptions& options, const Arguments& arguments) {
    for (const Arguments& last : {Arguments{"-productid", "last"}, Arguments{"-productid=last"}}) {
        Arguments longer = arguments;
        longer.insert(longer.end(), last.begin(), last.end());
        CommandLineOptions parsed;
        fuzz::Require(Parse(longer, parsed) == ResultCode::Ok);
        fuzz::Require(parsed.productId == "last");
        fuzz::Require(OtherOptions(parsed) == OtherOptions(options));
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::SilenceConsole();
    const Arguments arguments = LinesOf(data, size);
    CommandLineOptions options;
    const ResultCode code = Parse(arguments, options);
    fuzz::Require(code == ResultCode::Ok || code == ResultCode::SealkeeperUsageError);
    if (code == ResultCode::Ok) {
        CheckOptions(options, arguments);
    }
    if (code == ResultCode::Ok && options.action != ActionKind::None) {
        CheckLastValueWins(options, arguments);
    }
    return 0;
}
