#include "inspect/rules/rules_run.h"

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
#include "inspect/rules/second_selection.h"
#include "inspect/rules/selection.h"
#include "inspect/rules/selection_lint.h"
#include "inspect/rules/what_is_read.h"
#include "platform/converter_watch.h"

namespace sealkeeper {
namespace {

RulePlaces PlacesIn(std::string_view configText) {
    ConfigDocument document;
    ConfigOutline outline;
    static_cast<void>(OutlineConfigText(configText, document, outline));
    return PlacesOfRules(configText, outline);
}

std::vector<std::string> DirectoriesWithoutFiles(const std::vector<InventoryItem>& inventory) {
    std::vector<std::string> directories;
    for (const InventoryItem& item : inventory) {
        if (item.kind == ItemKind::DirectoryWithoutFiles) {
            directories.push_back(item.path);
        }
    }
    return directories;
}

// Sets the files of `report` and adds the warnings about `selection`, which must be complete.
ResultCode ReportSelection(const RulesRequest& request, const PlannedOutputs& outputs,
                           const Selection& selection, RulesReport& report) {
    std::vector<InventoryItem> inventory;
    // Only what exists: an output still to be written matters only if it is sealed.
    if (const ResultCode code = TakeInventory(SystemFileTree(), inventory);
        code != ResultCode::Ok) {
        return code;
    }
    const std::vector<std::string> withoutFiles = DirectoriesWithoutFiles(inventory);
    report.files = JudgeFiles(selection, std::move(inventory));

    SecondSelection second;
    if (const ResultCode code = SelectAgain(request.config, request.gameDirectory, outputs, second);
        code != ResultCode::Ok) {
        return code;
    }
    const RulePlaces places = PlacesIn(request.config.text);
    if (const ResultCode code =
            LintSelection({selection, second.selection, outputs, second.writtenOutputs, places,
                           report.files, withoutFiles},
                          report.warnings);
        code != ResultCode::Ok) {
        return code;
    }
    SortByPlace(report.warnings);
    return ResultCode::Ok;
}

ResultCode MakeReport(const RulesRequest& request, RulesReport& report) {
    report.configFile = request.config.path;
    report.gameDirectory = request.gameDirectory;
    report.warnings = LintConfigText(request.config.text);

    const PlannedOutputs outputs = PlanOutputs(request.gameDirectory, request.outputName);
    GameWithOutputs game(request.gameDirectory);
    Selection selection;
    if (const ResultCode code = SelectFiles(request.config, outputs, game, selection);
        code != ResultCode::Ok) {
        return code;
    }
    report.refusal = selection.refusal;
    if (!report.refusal) {
        if (const ResultCode code = LookAtWhatIsRead(selection); code != ResultCode::Ok) {
            return code;
        }
        report.refusal = FindFatalFile(selection);
    }
    if (selection.isComplete) {
        return ReportSelection(request, outputs, selection, report);
    }
    // The files are unknown, but a pattern without matches may explain the refusal.
    const RulePlaces places = PlacesIn(request.config.text);
    if (const ResultCode code = LintUnmatchedPatterns(
            {selection, selection, outputs, outputs, places, report.files, {}}, report.warnings);
        code != ResultCode::Ok) {
        return code;
    }
    SortByPlace(report.warnings);
    return ResultCode::Ok;
}

}  // namespace

ResultCode RunRules(const RulesRequest& request, RulesReport& report) {
    const ConverterWatch converter;
    const ResultCode code = MakeReport(request, report);
    // Otherwise the converter's error text would be judged in place of names. Asked in any case:
    // where the system cannot convert, other failures come of that.
    if (const ResultCode unsound = converter.RequireSound(); unsound != ResultCode::Ok) {
        return unsound;
    }
    return code;
}

}  // namespace sealkeeper
