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

std::string SystemReason(int systemError) {
    return std::strerror(systemError);
}

// The contents of the file. Empty, with the reason on standard error, if it cannot be read.
std::optional<std::string> ReadText(const std::string& path, Console& console) {
    errno = 0;
    const auto bytes = ReadWholeFile(path);
    const int systemError = errno;
    if (!bytes) {
        console.Fail("'" + path + "': " + CannotBeRead(path, systemError));
        return std::nullopt;
    }
    return std::string(bytes->begin(), bytes->end());
}

// The absolute form of `path`. Empty, with the reason on standard error, if it cannot be resolved.
std::optional<std::string> Resolve(const std::string& path, Console& console) {
    auto resolved = ResolvePath(path);
    if (!resolved) {
        console.Fail("'" + path + "': " + SystemReason(errno));
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
// anything in the game. If not, the reason is on standard error.
bool MayBePage(const std::string& path, const std::string& configFile,
               const std::string& gameDirectory, Console& console) {
    const std::string resolved = WrittenPath(path);
    if (resolved == configFile) {
        console.Fail("'" + path + "': is the configuration file");
        return false;
    }
    if (IsBelow(resolved, gameDirectory)) {
        console.Fail("'" + path + "': lies in the game, to which nothing is written");
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

int RunRulesCommand(const RulesOptions& options, Console& console) {
    const auto configFile = Resolve(options.configFile, console);
    if (!configFile) {
        return kStatusError;
    }
    const auto text = ReadText(options.configFile, console);
    const auto gameDirectory = Resolve(options.gameDirectory, console);
    if (!text || !gameDirectory) {
        return kStatusError;
    }
    const std::string pageFile = FromHere(options.pageFile);
    if (!options.pageFile.empty() && !MayBePage(pageFile, *configFile, *gameDirectory, console)) {
        return kStatusError;
    }
    if (chdir(gameDirectory->c_str()) != 0) {
        console.Fail("'" + options.gameDirectory + "': " + SystemReason(errno));
        return kStatusError;
    }
    RulesReport report;
    if (RunRules({options.configFile, *text, *gameDirectory, options.outputName}, report) !=
        ResultCode::Ok) {
        console.Fail(LastLoggedError());
        return kStatusError;
    }
    return ShowReport(report, options, pageFile, console);
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
        options->pageFile);
    command.SetRun([options, &console] { return RunRulesCommand(*options, console); });
}

}  // namespace sealkeeper
