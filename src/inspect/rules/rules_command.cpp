#include "inspect/rules/rules_command.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "inspect/report/command_status.h"
#include "inspect/report/logged_error.h"
#include "inspect/report/unread_reason.h"
#include "inspect/rules/rules_json.h"
#include "inspect/rules/rules_page.h"
#include "inspect/rules/rules_run.h"
#include "inspect/rules/rules_text.h"
#include "inspect/tree/path_below.h"
#include "platform/file_io.h"
#include "platform/file_system.h"
#include "platform/output_file.h"

namespace sealkeeper {
namespace {

struct RulesOptions {
    std::string configFile;
    std::string gameDirectory;
    std::string outputName = "base";
    std::string pageFile;
    bool isJson = false;
    bool listsEveryFile = false;
};

// What is wrong with the name of a file to write, such as that of an unset variable in a script.
std::string EmptyFileFault(const std::string& file) {
    return file.empty() ? "the name of a file is required" : "";
}

std::string SystemReason(int systemError) {
    return std::strerror(systemError);
}

// The contents of the file. Empty, with the reason in `failure`, if it cannot be read.
std::optional<std::string> ReadText(const std::string& path, std::string& failure) {
    errno = 0;
    const auto bytes = ReadWholeFile(path);
    const int systemError = errno;
    if (!bytes) {
        failure = "'" + path + "': " + CannotBeRead(path, systemError);
        return std::nullopt;
    }
    return std::string(bytes->begin(), bytes->end());
}

// The absolute form of `path`. Empty, with the reason in `failure`, if it cannot be resolved.
std::optional<std::string> Resolve(const std::string& path, std::string& failure) {
    auto resolved = ResolvePath(path);
    if (!resolved) {
        failure = "'" + path + "': " + SystemReason(errno);
    }
    return resolved;
}

// The absolute form of a path that need not exist.
std::string FromHere(const std::string& path) {
    const auto here = CurrentDirectory();
    return path.starts_with('/') || !here ? path : *here + "/" + path;
}

// The absolute path at which writing to `path` ends, with links followed.
std::string WrittenPath(const std::string& path) {
    const auto end = FollowLinks(path).value_or(path);
    const std::size_t name = end.rfind('/') + 1;
    const std::string folder = ResolvePath(end.substr(0, name)).value_or("");
    return (folder == "/" ? folder : folder + "/") + end.substr(name);
}

// Whether the page may be written to the absolute `path`: it must replace neither the rules nor
// anything in the game. If not, the reason is in `failure`.
bool MayBePage(const std::string& path, const std::string& configFile,
               const std::string& gameDirectory, std::string& failure) {
    const std::string resolved = WrittenPath(path);
    if (resolved == configFile) {
        failure = "'" + path + "': is the configuration file";
        return false;
    }
    if (IsBelow(resolved, gameDirectory)) {
        failure = "'" + path + "': lies in the game, to which nothing is written";
        return false;
    }
    return true;
}

bool WritePage(const RulesReport& report, const std::string& path, Console& console) {
    const std::string page = RulesPage(report);
    // The bytes as they are.
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(page.data());  // NOLINT
    if (WriteWholeFile(path, {bytes, page.size()}) != WriteOutcome::Written) {
        console.Fail("'" + path + "': cannot be written: " + SystemReason(errno));
        return false;
    }
    return true;
}

int ShowReport(const RulesReport& report, const RulesOptions& options, const std::string& pageFile,
               Console& console) {
    if (options.isJson) {
        console.Write(RulesJson(report));
    } else {
        console.Write(
            RulesText(report, console,
                      options.listsEveryFile ? RulesListing::EveryFile : RulesListing::LeftOut));
    }
    if (!options.pageFile.empty() && !WritePage(report, pageFile, console)) {
        return kStatusError;
    }
    return StatusOf(report);
}

// Makes `report`, and `pageFile` absolute. The game directory is then the current one. If no report
// can be made: false, with the reason in `failure`.
bool TryToMakeReport(const RulesOptions& options, RulesReport& report, std::string& pageFile,
                     std::string& failure) {
    const auto configFile = Resolve(options.configFile, failure);
    const auto text = configFile ? ReadText(options.configFile, failure) : std::nullopt;
    const auto gameDirectory = text ? Resolve(options.gameDirectory, failure) : std::nullopt;
    if (!gameDirectory) {
        return false;
    }
    pageFile = FromHere(options.pageFile);
    if (!options.pageFile.empty() && !MayBePage(pageFile, *configFile, *gameDirectory, failure)) {
        return false;
    }
    if (chdir(gameDirectory->c_str()) != 0) {
        failure = "'" + options.gameDirectory + "': " + SystemReason(errno);
        return false;
    }
    if (RunRules({{options.configFile, *text}, *gameDirectory, options.outputName}, report) !=
        ResultCode::Ok) {
        failure = LastLoggedError();
        return false;
    }
    return true;
}

int RunRulesCommand(const RulesOptions& options, Console& console) {
    RulesReport report;
    std::string pageFile;
    std::string failure;
    if (TryToMakeReport(options, report, pageFile, failure)) {
        return ShowReport(report, options, pageFile, console);
    }
    if (options.isJson) {
        console.Write(RulesFailureJson(options.configFile, options.gameDirectory, failure));
    }
    console.Fail(failure);
    return kStatusError;
}

}  // namespace

void AddRulesCommand(CommandLine& commandLine, Console& console) {
    const auto options = std::make_shared<RulesOptions>();
    Command command = commandLine.AddCommand(
        "rules",
        "Say what generate would hash of a game, why not the rest, and what is wrong with the rules");
    command.AddOperand("CFG", "The configuration file", options->configFile);
    command.AddRequiredText({"--game", "DIR", "The game directory"}, options->gameDirectory);
    command.AddText({"--outname", "NAME", "The output name (-outname)"}, options->outputName);
    command.AddFlag("--files", "Name every file, sealed ones too", options->listsEveryFile);
    command.AddFlag("--json", "Report as JSON", options->isJson);
    command.AddText(
        {"--html", "FILE", "Write a page that shows the game by size to this file, too"},
        options->pageFile, EmptyFileFault);
    command.SetRun([options, &console] { return RunRulesCommand(*options, console); });
}

}  // namespace sealkeeper
