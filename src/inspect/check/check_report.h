// What a check found of an installed game.
#ifndef SEALKEEPER_INSPECT_CHECK_CHECK_REPORT_H
#define SEALKEEPER_INSPECT_CHECK_CHECK_REPORT_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "app/runtime_configuration_check.h"

namespace sealkeeper {

struct CheckedCatalogue {
    // Of the file.
    std::string name;
    ResultCode code = ResultCode::Ok;
    std::uint64_t files = 0;
};

struct CheckedFile {
    // As the catalogue has it, which is from the game directory.
    std::string path;
    // Of `CheckReport::catalogues`.
    std::size_t catalogueIndex = 0;
    std::uint64_t listedSizeBytes = 0;
    ResultCode code = ResultCode::Ok;
    // Stored at four bytes a character, as aliased paths are: `path` is the first character alone.
    bool isAliased = false;
};

// In the words of reports: "not read", "good", "certificate not read" and so on.
[[nodiscard]] const char* RuntimeConfigurationVerdictText(RuntimeConfigurationVerdict verdict);

// What verifying says nothing about.
enum class AdditionKind {
    UnlistedFile,
    UnlistedLink,
    UnlistedSpecialFile,
    LinkWhereSealed,
    // A directory that cannot be read, so that what it holds is not known, and the like.
    NotLookedAt,
    MissingRuntimeConfiguration,
    UnreadableRuntimeConfiguration,
};

// In the words of reports: "unlisted file" and so on.
[[nodiscard]] const char* AdditionKindText(AdditionKind kind);

struct Addition {
    AdditionKind kind;
    // From the game directory, as on disk.
    std::string path;
    // Where a link leads to; otherwise empty.
    std::string target;
    // How many listed files a link stands in the way to.
    std::uint64_t sealedFiles = 0;
    // Why something could not be looked at or read, where that is known.
    std::string reason;
};

struct CheckReport {
    // As it was given; absolute once it resolved.
    std::string gameDirectory;
    std::string productId;
    // Those read, in the order of reading. The last one ended the verification if it has a failure.
    std::vector<CheckedCatalogue> catalogues;
    // Those verified, in the order of the catalogues.
    std::vector<CheckedFile> files;
    // Nothing when the verification ended before.
    std::optional<RuntimeConfigurationVerdict> runtimeConfiguration;
    // What is wrong with runtime.conf or its certificate; else empty.
    std::string runtimeConfigurationFailure;
    // Why the verification ended before its end; else empty. Nobody looked for additions then.
    std::string failure;
    // The code of all, which is the exit status of verify.
    ResultCode code = ResultCode::Ok;
    // By kind, and then by path.
    std::vector<Addition> additions;
};

// How many files ended with which code.
[[nodiscard]] std::map<ResultCode, std::uint64_t> CountsByCode(const CheckReport& report);

// The exit status of a check under --strict that found nothing wrong but additions.
inline constexpr int kAdditionsStatus = 40;

// The exit status: that of verify; where that is 0 and additions count, by `isStrict`,
// `kAdditionsStatus`.
[[nodiscard]] int StatusOf(const CheckReport& report, bool isStrict);

}  // namespace sealkeeper

#endif
