#include "inspect/check/check_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "app/command_line_options.h"
#include "app/job_count.h"
#include "inspect/check/check_json.h"
#include "inspect/check/check_junit.h"
#include "inspect/check/check_text.h"
#include "inspect/check/game_check.h"

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
    return JobsFrom(text) ? "" : "--jobs: '" + text + "' is no number from 0 to 256";
}

std::string EmptyProductFault(const std::string& text) {
    return text.empty() ? "--product: a product id is required" : "";
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

void AddCheckCommand(CLI::App& program, Console& console, int& status) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const command = program.add_subcommand(
        "check",
        "Verify a game, and say what verify leaves unsaid: unlisted files, links, a missing runtime.conf");
    command->add_option("DIR", options->directory, "The game directory")->type_name("")->required();
    command->add_option("--product", options->productId, "The product id of the game")
        ->required()
        ->check(EmptyProductFault)
        ->type_name("ID");
    CLI::Option* const format =
        command
            ->add_option("--format", options->format, "The form of the report: text, json or junit")
            ->check(CLI::IsMember({"text", "json", "junit"}))
            ->type_name("FORMAT");
    command->add_flag("--json", options->isJson, "Report as JSON: the same as --format json")
        ->excludes(format);
    command->add_flag("--strict", options->text.isStrict,
                      "End with 40 for what verify leaves unsaid");
    command->add_flag("--verbose", options->text.isVerbose, "Show good files and all additions");
    command
        ->add_option("--jobs", options->jobs,
                     "Hash in so many threads, up to 256; 0: one for each processor")
        ->check(JobsFault)
        ->type_name("N");
    command->callback([options, &console, &status] { status = RunCheck(*options, console); });
}

}  // namespace sealkeeper
