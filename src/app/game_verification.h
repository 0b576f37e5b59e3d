// The verification of an installed game against its signed catalogues and its runtime.conf, step by
// step: who asks for the steps shows their results as it likes.
#ifndef SEALKEEPER_APP_GAME_VERIFICATION_H
#define SEALKEEPER_APP_GAME_VERIFICATION_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/command_line_options.h"
#include "app/result_code.h"
#include "app/runtime_configuration_check.h"
#include "app/verification_summary.h"
#include "catalogue/hash_catalogue.h"
#include "catalogue/hashing/file_hasher.h"
#include "catalogue/stored_entry.h"
#include "platform/converter_watch.h"

namespace sealkeeper {

// A catalogue that was read, or tried to be.
struct VerifiedCatalogue {
    // Of the file; an error text when it is not UTF-8.
    std::string nameUtf8;
    // Why it was not read, which ended the verification.
    ResultCode code = ResultCode::Ok;
    // Of all catalogues up to and with this one.
    std::size_t entriesSoFar = 0;
};

// What was found of one listed file.
struct FileVerdict {
    // Null until the verdict is given; lives as long as the verification.
    const StoredEntry* entry = nullptr;
    // Of `GameVerification::Catalogues`.
    std::size_t catalogueIndex = 0;
    std::string pathUtf8;
    // As of `StoredEntry::VerifyCatalogueFile`.
    ResultCode code = ResultCode::Ok;
};

// The steps are for calling in the order in which they stand here, each once and `VerifyNextFile`
// as often as there are files. What fails of them ends the verification. Each logs what it does,
// but not the verdicts and their summary.
class GameVerification {
  public:
    // Takes `verifyDir`, `productId`, `gameDevMode` and `jobs` of `options`, which must outlive it.
    explicit GameVerification(const CommandLineOptions& options);
    GameVerification(const GameVerification&) = delete;
    GameVerification& operator=(const GameVerification&) = delete;
    ~GameVerification() = default;

    // Makes the game directory the process's current one. Fails, logged, with
    // `SealkeeperUsageError` when the directory does not resolve, `SealkeeperIOError` when it has
    // no catalogues or the system fails to read where they lie, `CatalogueError` when it fails to
    // convert a name, and `InitFailedWorkingDirectory`.
    ResultCode FindCatalogues();

    // Reads all catalogues. Fails, logged, as `HashCatalogue::ReadAndVerifyCatalogue` does for any
    // of them; the last of `Catalogues` is that one then.
    ResultCode ReadCatalogues();

    // Those read so far, in the order of reading.
    [[nodiscard]] const std::vector<VerifiedCatalogue>& Catalogues() const { return catalogues_; }

    // What they list, catalogue by catalogue.
    [[nodiscard]] const EntryList& Entries() const { return entries_; }

    [[nodiscard]] bool HasNextFile() const { return nextFile_ < entries_.size(); }

    // Checks the next file, of which there is one. Shows progress dots and ends the console line.
    // Fails, logged and without a verdict, with `CatalogueError` when the system fails to convert a
    // path: under another path there may be another file, even an intact one.
    ResultCode VerifyNextFile(FileVerdict& verdict);

    // Of the files verified so far.
    [[nodiscard]] const VerificationSummary& Summary() const { return summary_; }

    RuntimeConfigurationVerdict VerifyRuntimeConfiguration();

    // The code of all: the failure of runtime.conf or, where that is none, of the files.
    [[nodiscard]] ResultCode Result() const;

    // The game's, absolute and ending in '/', once its catalogues are found.
    [[nodiscard]] const std::string& Directory() const { return directory_; }

  private:
    ResultCode ReadCatalogue(const std::wstring& name, std::string& shown);
    void BeginFiles();

    const CommandLineOptions& options_;
    std::string directory_;
    std::vector<std::wstring> names_;
    HashCatalogue catalogue_;
    std::vector<VerifiedCatalogue> catalogues_;
    EntryList entries_;
    // Of the paths, since their files are opened.
    std::optional<ConverterWatch> converter_;
    std::optional<FileHasher> hasher_;
    std::size_t nextFile_ = 0;
    std::size_t catalogueIndex_ = 0;
    VerificationSummary summary_;
    ResultCode runtimeCode_ = ResultCode::Ok;
};

}  // namespace sealkeeper

#endif
