#include "app/verify_action.h"

#include "app/console_log.h"
#include "app/game_verification.h"
#include "app/usage_text.h"

namespace sealkeeper {
namespace {

void LogVerdict(const FileVerdict& verdict) {
    // Neither message has a line feed: the next `EndConsoleLine` ends its line.
    if (verdict.code != ResultCode::Ok) {
        Log(LogLevel::Error, "[Failure] Failed to verify '%s' - Code %i (%s).",
            verdict.pathUtf8.c_str(), ResultCodeNumber(verdict.code),
            ResultFailureText(verdict.code));
    } else {
        Log(LogLevel::Info, "[Success] Successfully verified '%s'.", verdict.pathUtf8.c_str());
    }
}

// Prints the verdicts and their summary.
ResultCode VerifyFiles(GameVerification& game) {
    FileVerdict verdict;
    while (game.HasNextFile()) {
        if (const ResultCode code = game.VerifyNextFile(verdict); code != ResultCode::Ok) {
            return code;
        }
        LogVerdict(verdict);
    }
    EndConsoleLine();
    EndConsoleLine();
    game.Summary().Print();
    return ResultCode::Ok;
}

}  // namespace

ResultCode RunVerifyAction(const CommandLineOptions& options) {
    GameVerification game(options);
    if (const ResultCode code = game.FindCatalogues(); code != ResultCode::Ok) {
        if (code == ResultCode::SealkeeperUsageError) {
            PrintUsage(HelpText::Omitted);
        }
        return code;
    }
    if (const ResultCode code = game.ReadCatalogues(); code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = VerifyFiles(game); code != ResultCode::Ok) {
        return code;
    }
    game.VerifyRuntimeConfiguration();
    return game.Result();
}

}  // namespace sealkeeper
