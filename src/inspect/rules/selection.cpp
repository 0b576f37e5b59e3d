#include "inspect/rules/selection.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "app/catalogue_builder.h"
#include "config/catalogue_rules.h"
#include "config/config_document.h"
#include "config/config_names.h"
#include "inspect/report/logged_error.h"
#include "platform/found_file.h"
#include "runtime/runtime_configuration_format.h"
#include "runtime/runtime_settings.h"

namespace sealkeeper {
namespace {

// Whether the failure is about the rules and not the system.
bool TellsOfTheRules(ResultCode code) {
    return code == ResultCode::InitFailedConfig;
}

// The refusal for a step that failed with `code`.
Refusal RefusalOf(ResultCode code) {
    return {code, LastLoggedError()};
}

// Whether `path` is a directory, or can become one as far as names tell.
bool CanBeDirectory(const std::string& path, const FileTree& game) {
    FileStatus status;
    bool isTaken = false;
    if (game.LookAtPath(path, status) != ResultCode::Ok ||
        game.LookForName(path, isTaken) != ResultCode::Ok) {
        return false;
    }
    // A dangling link occupies the name, too.
    return isTaken ? status.type == FileType::Directory : status.type == FileType::Missing;
}

std::optional<Refusal> PlaceDirectories(const PlannedOutputs& outputs, GameWithOutputs& game) {
    for (const std::string& directory : outputs.directories) {
        if (!CanBeDirectory("./" + directory, game)) {
            return Refusal{
                ResultCode::SealkeeperIOError,
                "'" + directory + "' cannot be the output directory or a part of its path."};
        }
        game.AddDirectory(directory);
    }
    return std::nullopt;
}

ResultCode MatchPatterns(const CatalogueConfig& config, const FileTree& game,
                         std::vector<PathSet>& matches) {
    for (const std::string& pattern : PatternsInUse(config)) {
        bool hasMatched = false;
        if (const ResultCode code = GlobPaths({pattern}, matches.emplace_back(), hasMatched, game);
            code != ResultCode::Ok) {
            return code;
        }
    }
    return ResultCode::Ok;
}

// Adds the file at `path`. Looks at it first if the walk did not.
ResultCode LookAtSelected(const FileTree& game, const std::string& path, const FileStatus& seen,
                          std::vector<SelectedFile>& files) {
    FileStatus status = seen;
    if (status.type == FileType::Missing) {
        if (const ResultCode code = game.LookAtPath(path, status); code != ResultCode::Ok) {
            return code;
        }
    }
    files.push_back({path, static_cast<std::uint64_t>(status.sizeBytes), status.type});
    return ResultCode::Ok;
}

ResultCode Walk(const FileCollector& collector, const FileTree& game, Selection& selection) {
    std::vector<FoundFile> found;
    CollectionTrace trace;
    if (const ResultCode code =
            collector.CollectFilesTraced(kWholeDirectory, kEveryFilePattern, found, trace);
        code != ResultCode::Ok) {
        return code;
    }
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (const ResultCode code =
                LookAtSelected(game, trace.paths[i], found[i].status, selection.files);
            code != ResultCode::Ok) {
            return code;
        }
    }
    selection.skipped = std::move(trace.skipped);
    selection.isComplete = true;
    return ResultCode::Ok;
}

// The steps of generate from reading its configuration file to listing its files, in the same
// order.
ResultCode RunSteps(const ConfigFile& config, const PlannedOutputs& outputs, GameWithOutputs& game,
                    Selection& selection) {
    ConfigDocument document;
    if (const ResultCode code = CheckConfigText(config.path, config.text, document);
        code != ResultCode::Ok) {
        return code;
    }
    FileCollector collector("./", game);
    std::string sectionName = kSearchSection;
    const ResultCode applied = collector.ApplyCatalogueRules(document.GetSection(sectionName));
    selection.config = collector.Config();
    if (applied != ResultCode::Ok) {
        return applied;
    }
    if (const ResultCode code = MatchPatterns(selection.config, game, selection.matches);
        code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = collector.ResolvePaths(); code != ResultCode::Ok) {
        return code;
    }
    if (outputs.runtimeConfiguration) {
        RuntimeConfiguration settings;
        if (!LoadRuntimeSettings(settings, document)) {
            selection.refusal =
                Refusal{ResultCode::InitFailedConfig, WithoutLineFeed(kUnknownSolutionText)};
            return ResultCode::Ok;
        }
        game.AddFile(*outputs.runtimeConfiguration, runtime_file::kSizeBytes);
    }
    collector.AddExcludedPath(outputs.pathToLeaveOut);
    return Walk(collector, game, selection);
}

}  // namespace

bool HasIncludes(const CatalogueConfig& config) {
    return !config.includePaths.empty();
}

const std::vector<std::string>& PatternsInUse(const CatalogueConfig& config) {
    return HasIncludes(config) ? config.includePaths : config.excludePaths;
}

ResultCode SelectFiles(const ConfigFile& config, const PlannedOutputs& outputs,
                       GameWithOutputs& game, Selection& selection) {
    ForgetLoggedError();
    if (auto refusal = PlaceDirectories(outputs, game)) {
        selection.refusal = std::move(refusal);
        return ResultCode::Ok;
    }
    const ResultCode code = RunSteps(config, outputs, game, selection);
    if (TellsOfTheRules(code)) {
        selection.refusal = RefusalOf(code);
        return ResultCode::Ok;
    }
    if (code == ResultCode::Ok && !selection.refusal && selection.files.empty()) {
        selection.refusal = Refusal{ResultCode::CatalogueError, kEmptyCatalogueText};
    }
    return code;
}

}  // namespace sealkeeper
