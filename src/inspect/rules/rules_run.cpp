#include "inspect/rules/rules_run.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>
#include <vector>

#include "config/config_outline.h"
#include "inspect/lint/lint_config_text.h"
#include "inspect/rules/fatal_files.h"
#include "inspect/rules/game_inventory.h"
#include "inspect/rules/game_with_outputs.h"
#include "inspect/rules/judged_files.h"
#include "inspect/rules/planned_outputs.h"
#include "inspect/rules/rule_places.h"
#include "inspect/rules/selection.h"
#include "inspect/rules/selection_lint.h"

namespace sealkeeper {
namespace {

void SortByPlace(std::vector<RuleWarning>& warnings) {
    std::stable_sort(warnings.begin(), warnings.end(),
                     [](const RuleWarning& a, const RuleWarning& b) {
                         return std::tie(a.line, a.column) < std::tie(b.line, b.column);
                     });
}

// What a second run selects, which finds the outputs of the first. Sets `written` to where these
// come to lie.
ResultCode SelectAgain(const RulesRequest& request, const PlannedOutputs& outputs,
                       Selection& selection, PlannedOutputs& written) {
    GameWithOutputs game(request.gameDirectory);
    for (const std::string& directory : outputs.directories) {
        game.AddDirectory(directory);
    }
    game.AddFile(outputs.catalogue, 0);
    game.AddFile(outputs.certificateCopy, 0);
    if (outputs.runtimeConfiguration) {
        game.AddFile(*outputs.runtimeConfiguration, 0);
    }
    written = outputs;
    written.catalogue = game.LocationOf(outputs.catalogue);
    written.certificateCopy = game.LocationOf(outputs.certificateCopy);
    if (outputs.runtimeConfiguration) {
        written.runtimeConfiguration = game.LocationOf(*outputs.runtimeConfiguration);
    }
    return SelectFiles(request.configText, outputs, game, selection);
}

}  // namespace

ResultCode RunRules(const RulesRequest& request, RulesReport& report) {
    report.configFile = request.configFile;
    report.gameDirectory = request.gameDirectory;
    report.warnings = LintConfigText(request.configText);

    const PlannedOutputs outputs = PlanOutputs(request.gameDirectory, request.outputName);
    GameWithOutputs game(request.gameDirectory);
    Selection selection;
    if (const ResultCode code = SelectFiles(request.configText, outputs, game, selection);
        code != ResultCode::Ok) {
        return code;
    }
    report.refusal = selection.refusal ? selection.refusal : FindFatalFile(selection);
    // Nothing is known of the files then.
    if (!selection.isComplete) {
        return ResultCode::Ok;
    }
    std::vector<InventoryItem> inventory;
    // Of what is there: an output that is yet to be written is only worth a word if it is sealed.
    if (const ResultCode code = TakeInventory(SystemFileTree(), inventory);
        code != ResultCode::Ok) {
        return code;
    }
    report.files = JudgeFiles(selection, inventory);

    Selection second;
    PlannedOutputs written;
    if (const ResultCode code = SelectAgain(request, outputs, second, written);
        code != ResultCode::Ok) {
        return code;
    }
    ConfigDocument document;
    ConfigOutline outline;
    static_cast<void>(OutlineConfigText(request.configText, document, outline));
    const RulePlaces places = PlacesOfRules(request.configText, outline);
    auto warnings = LintSelection({selection, second, outputs, written, places, report.files});
    std::move(warnings.begin(), warnings.end(), std::back_inserter(report.warnings));
    SortByPlace(report.warnings);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
