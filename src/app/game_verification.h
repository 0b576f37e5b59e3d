// The verification of an installed game against its signed catalogues and its runtime.conf, in
// steps. The caller runs the steps and decides how to show their results.
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

// A catalogue that was read or could not be read.
struct VerifiedCatalogue {
    // The file name; an error text when it is not UTF-8.
    std::string nameUtf8;
    // Whether the file name is UTF-8.
    bool isNameUtf8 = true;
    // `Ok`, or why it could not be read, which ended the verification.
    ResultCode code = ResultCode::Ok;
    // The number of entries in all catalogues up to and including this one.
    std::size_t entriesSoFar = 0;
};

// The result for one listed file.
struct FileVerdict {
    // Null until the verdict is set. Valid as long as the verification.
    const StoredEntry* entry = nullptr;
    // Into `GameVerification::Catalogues`.
    std::size_t catalogueIndex = 0;
    std::string pathUtf8;
    // As `StoredEntry::VerifyCatalogueFile` returns it.
    ResultCode code = ResultCode::Ok;
};

// Call the steps in the order in which they are declared, each once, and `VerifyNextFile` once for
// each file. A step that fails ends the verification. The steps log what they do, but not the
// verdicts of the files or their summary.
class GameVerification {
  public:
    // Uses `verifyDir`, `productId`, `gameDevMode` and `jobs` of `options`, which must outlive this
    // object.
    explicit GameVerification(const CommandLineOptions& options);
    GameVerification(const GameVerification&) = delete;
    GameVerification& operator=(const GameVerification&) = delete;
    ~GameVerification() = default;

    // Finds the catalogues and makes the game directory the current directory of the process.
    // Fails, logged, with `SealkeeperUsageError` when the directory does not resolve,
    // `SealkeeperIOError` when it has no catalogues or the system fails to read their directory,
    // `CatalogueError` when the system fails to convert a name, and `InitFailedWorkingDirectory`
    // when the current directory cannot be changed.
    ResultCode FindCatalogues();

    // Why the system did not resolve the directory or change into it, as errno, where
    // `FindCatalogues` failed for that; otherwise 0.
    [[nodiscard]] int DirectoryError() const { return directoryError_; }

    // Reads all catalogues. Fails, logged, as `HashCatalogue::ReadAndVerifyCatalogue` does for any
    // of them, which is then the last of `Catalogues`, and with `CatalogueError` when the system
    // fails to convert a name.
    ResultCode ReadCatalogues();

    // The catalogues read so far, in that order.
    [[nodiscard]] const std::vector<VerifiedCatalogue>& Catalogues() const { return catalogues_; }

    // The entries of all catalogues, in the order of `Catalogues`.
    [[nodiscard]] const EntryList& Entries() const { return entries_; }

    [[nodiscard]] bool HasNextFile() const { return nextFile_ < entries_.size(); }

    // Checks the next file; `HasNextFile` must be true. Shows progress dots and ends the console
    // line. Fails, logged and without a verdict, with `CatalogueError` when the system fails to
    // convert a path: the error text in its place could name another file, even an intact one.
    ResultCode VerifyNextFile(FileVerdict& verdict);

    // Covers the files verified so far.
    [[nodiscard]] const VerificationSummary& Summary() const { return summary_; }

    RuntimeConfigurationVerdict VerifyRuntimeConfiguration();

    // The overall result: the failure of runtime.conf or, if it has none, the result of the files.
    [[nodiscard]] ResultCode Result() const;

    // The game directory, absolute and ending in '/'. Set by `FindCatalogues`.
    [[nodiscard]] const std::string& Directory() const { return directory_; }

  private:
    ResultCode ReadCatalogue(const std::wstring& name, std::string& shown);
    void BeginFiles();

    const CommandLineOptions& options_;
    std::string directory_;
    int directoryError_ = 0;
    std::vector<std::wstring> names_;
    HashCatalogue catalogue_;
    std::vector<VerifiedCatalogue> catalogues_;
    EntryList entries_;
    // Watches the conversion of the paths of files, from when the first is opened.
    std::optional<ConverterWatch> converter_;
    std::optional<FileHasher> hasher_;
    std::size_t nextFile_ = 0;
    std::size_t catalogueIndex_ = 0;
    VerificationSummary summary_;
    ResultCode runtimeCode_ = ResultCode::Ok;
};

}  // namespace sealkeeper

#endif
