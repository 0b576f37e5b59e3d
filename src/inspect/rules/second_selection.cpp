#include "inspect/rules/second_selection.h"

#include "app/console_log.h"
#include "inspect/rules/game_with_outputs.h"
#include "inspect/rules/selected_outputs.h"

namespace sealkeeper {
namespace {

void AddOutputs(const PlannedOutputs& outputs, GameWithOutputs& game) {
    for (const std::string& directory : outputs.directories) {
        game.AddDirectory(directory);
    }
    game.AddFile(outputs.catalogue, 0);
    game.AddFile(outputs.certificateCopy, 0);
    if (outputs.runtimeConfiguration) {
        game.AddFile(*outputs.runtimeConfiguration, 0);
    }
}

PlannedOutputs WrittenOutputs(const PlannedOutputs& outputs, const GameWithOutputs& game) {
    PlannedOutputs written = outputs;
    written.catalogue = game.LocationOf(outputs.catalogue);
    written.certificateCopy = game.LocationOf(outputs.certificateCopy);
    if (outputs.runtimeConfiguration) {
        written.runtimeConfiguration = game.LocationOf(*outputs.runtimeConfiguration);
    }
    return written;
}

}  // namespace

ResultCode SelectAgain(const ConfigFile& config, const std::string& gameDirectory,
                       const PlannedOutputs& outputs, SecondSelection& second) {
    second = SecondSelection();
    GameWithOutputs game(gameDirectory);
    AddOutputs(outputs, game);
    second.writtenOutputs = WrittenOutputs(outputs, game);
    if (const ResultCode code = SelectFiles(config, outputs, game, second.selection);
        code != ResultCode::Ok) {
        return code;
    }
    if (!second.selection.isComplete) {
        Log(LogLevel::Error, "The game has changed while it was looked at.\n");
        return ResultCode::SealkeeperIOError;
    }
    NameAsSelected(second.selection, game, outputs, second.writtenOutputs);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
