#include "inspect/check/check_command.h"

#include <memory>
#include <string>

#include "app/command_line_options.h"
#include "app/job_count.h"
#include "inspect/check/check_json.h"
#include "inspect/check/check_junit.h"
#include "inspect/check/check_text.h"
#include "inspect/check/game_check.h"
#include "inspect/command_line/product_fault.h"

namespace sealkeeper {
namespace {

struct CheckOptions {
    std::string directory;
    std::string productId;
    std::string format = "text";
    std::string jobs = "1";
    bool isJson = false;
    CheckTextOptions text;
};

std::string JobsFault(const std::string& text) {
    return JobsFrom(text)
               ? ""
               : "'" + text + "' is not a whole number from 0 to " + std::to_string(kMostJobs);
}

CheckReport CheckBy(const CheckOptions& options) {
    CommandLineOptions verifyOptions;
    verifyOptions.action = ActionKind::Verify;
    verifyOptions.verifyDir = options.directory;
    verifyOptions.productId = options.productId;
    verifyOptions.jobs = JobsFrom(options.jobs).value_or(1);
    return CheckGame(verifyOptions);
}

std::string ReportText(const CheckReport& report, const CheckOptions& options,
                       const Console& console) {
    const bool isStrict = options.text.isStrict;
    if (options.isJson || options.format == "json") {
        return CheckJson(report, isStrict);
    }
    return options.format == "junit" ? CheckJunit(report, isStrict)
                                     : CheckText(report, options.text, console);
}

int RunCheck(const CheckOptions& options, Console& console) {
    const CheckReport report = CheckBy(options);
    console.Write(ReportText(report, options, console));
    if (!report.failure.empty()) {
        console.Fail(report.failure);
    }
    if (report.runtimeConfiguration && CodeOf(*report.runtimeConfiguration) != ResultCode::Ok) {
        console.Fail(report.runtimeConfigurationFailure);
    }
    return StatusOf(report, options.text.isStrict);
}

}  // namespace

void AddCheckCommand(CommandLine& commandLine, Console& console) {
    const auto options = std::make_shared<CheckOptions>();
    Command command = commandLine.AddCommand(
        "check",
        "Verify a game, and say what verify leaves unsaid: unlisted files, links, a missing runtime.conf");
    command.AddOperand("DIR", "The game directory", options->directory);
    command.AddRequiredText({"--product", "ID", "The product id of the game"}, options->productId,
                            EmptyProductFault);
    command.AddChoice({"--format", "FORMAT", "The form of the report"}, {"text", "json", "junit"},
                      options->format);
    command.AddFlag("--json", "Report as JSON: the same as --format json", options->isJson);
    command.Exclude("--json", "--format");
    command.AddFlag("--strict", "End with 40 for what verify leaves unsaid",
                    options->text.isStrict);
    command.AddFlag("--verbose", "Show good files and all additions", options->text.isVerbose);
    command.AddText(
        {"--jobs", "N", "Hash in so many threads, up to 256; 0: one for each processor"},
        options->jobs, JobsFault);
    command.SetRun([options, &console] { return RunCheck(*options, console); });
}

}  // namespace sealkeeper
