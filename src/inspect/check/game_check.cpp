#include "inspect/check/game_check.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "app/certificates_directory.h"
#include "app/game_verification.h"
#include "inspect/check/catalogue_failure.h"
#include "inspect/check/file_progress.h"
#include "inspect/check/game_additions.h"
#include "inspect/report/capped_sum.h"
#include "inspect/report/code_text.h"
#include "inspect/report/logged_error.h"
#include "inspect/tree/access_right.h"

namespace sealkeeper {
namespace {

std::string SearchFailureText(const GameVerification& game, const std::string& directory) {
    if (game.DirectoryError() != 0) {
        return "'" + directory + "': cannot be entered: " + std::strerror(game.DirectoryError());
    }
    std::string failure = LastLoggedError();
    // Verify says of a forbidden directory, too, that it is not there or holds nothing.
    bool isForbidden = false;
    const ResultCode code =
        AskForRight(game.Directory() + kCertificatesDirectory, R_OK | X_OK, isForbidden);
    if (code == ResultCode::Ok && isForbidden) {
        failure.append(" (").append(std::strerror(EACCES)).append(")");
    }
    return failure;
}

// Ends the verification in `report` with `code`. Without a `failure`, the text of the code is the
// reason.
ResultCode EndWith(ResultCode code, std::string failure, CheckReport& report) {
    report.code = code;
    report.failure = failure.empty() ? CodeText(code) : std::move(failure);
    return code;
}

ResultCode FindCatalogues(GameVerification& game, CheckReport& report) {
    const ResultCode code = game.FindCatalogues();
    return code == ResultCode::Ok
               ? code
               : EndWith(code, SearchFailureText(game, report.gameDirectory), report);
}

// Why `failed`, the last catalogue, could not be read.
std::string ReadingFailureText(const VerifiedCatalogue& failed, const std::string& productId) {
    // Only failures with this code are logged in detail; for the others the code says everything.
    const bool isCauseLogged = failed.code == ResultCode::CatalogueError;
    return CatalogueFailureText({failed.code, kCertificatesDirectory + failed.nameUtf8,
                                 failed.isNameUtf8, productId,
                                 isCauseLogged ? FirstLoggedError() : ""});
}

ResultCode ReadCatalogues(GameVerification& game, CheckReport& report) {
    ForgetLoggedError();
    const ResultCode code = game.ReadCatalogues();
    std::uint64_t entriesBefore = 0;
    for (const VerifiedCatalogue& catalogue : game.Catalogues()) {
        report.catalogues.push_back(
            {catalogue.nameUtf8, catalogue.code, catalogue.entriesSoFar - entriesBefore});
        entriesBefore = catalogue.entriesSoFar;
    }
    return code == ResultCode::Ok
               ? code
               : EndWith(code, ReadingFailureText(game.Catalogues().back(), report.productId),
                         report);
}

// Saturates: the sizes are what untrusted catalogues claim.
std::uint64_t TotalBytesOf(const EntryList& entries) {
    std::uint64_t total = 0;
    for (const auto& entry : entries) {
        total = CappedSum(total, entry->FileSizeBytes());
    }
    return total;
}

ResultCode VerifyFiles(GameVerification& game, CheckReport& report) {
    FileProgress progress(TotalBytesOf(game.Entries()));
    report.files.reserve(game.Entries().size());
    FileVerdict verdict;
    while (game.HasNextFile()) {
        progress.BeginFile(game.Entries()[report.files.size()]->FileSizeBytes());
        if (const ResultCode code = game.VerifyNextFile(verdict); code != ResultCode::Ok) {
            return EndWith(code, LastLoggedError(), report);
        }
        const StoredEntry& entry = *verdict.entry;
        report.files.push_back({verdict.pathUtf8, verdict.catalogueIndex, entry.FileSizeBytes(),
                                verdict.code, entry.NamePosition() > entry.PathUnits()});
        progress.EndFile();
    }
    return ResultCode::Ok;
}

void VerifyRuntimeConfiguration(GameVerification& game, CheckReport& report) {
    ForgetLoggedError();
    report.runtimeConfiguration = game.VerifyRuntimeConfiguration();
    report.runtimeConfigurationFailure = LastLoggedError();
    report.code = game.Result();
}

// Verifies, and looks for additions if the verification was completed.
void Verify(const CommandLineOptions& options, CheckReport& report) {
    GameVerification game(options);
    if (FindCatalogues(game, report) == ResultCode::Ok &&
        ReadCatalogues(game, report) == ResultCode::Ok &&
        VerifyFiles(game, report) == ResultCode::Ok) {
        VerifyRuntimeConfiguration(game, report);
        report.additions = FindAdditions(report, game.Directory());
    }
}

}  // namespace

CheckReport CheckGame(const CommandLineOptions& options) {
    CheckReport report;
    report.gameDirectory = options.verifyDir;
    report.productId = options.productId;
    try {
        Verify(options, report);
    } catch (const std::bad_alloc&) {
        report.code = ResultCode::SealkeeperHashtoolGenericError;
        report.failure = "out of memory";
    }
    return report;
}

}  // namespace sealkeeper
