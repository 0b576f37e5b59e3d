// The result of checking an installed game.
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
    // The file name.
    std::string name;
    ResultCode code = ResultCode::Ok;
    std::uint64_t files = 0;
};

struct CheckedFile {
    // As the catalogue lists it, relative to the game directory.
    std::string path;
    // Index in `CheckReport::catalogues`.
    std::size_t catalogueIndex = 0;
    std::uint64_t listedSizeBytes = 0;
    ResultCode code = ResultCode::Ok;
    // Stored with four bytes per character, as aliased paths are. Then `path` is only the first
    // one.
    bool isAliased = false;
};

// As reports print it: "not read", "good", "certificate not read" and so on.
[[nodiscard]] const char* RuntimeConfigurationVerdictText(RuntimeConfigurationVerdict verdict);

// What verify does not report.
enum class AdditionKind {
    UnlistedFile,
    UnlistedLink,
    UnlistedSpecialFile,
    LinkWhereSealed,
    // Something that could not be examined, such as a directory that cannot be read.
    NotLookedAt,
    MissingRuntimeConfiguration,
    UnreadableRuntimeConfiguration,
};

// As reports print it: "unlisted file" and so on.
[[nodiscard]] const char* AdditionKindText(AdditionKind kind);

struct Addition {
    AdditionKind kind;
    // Relative to the game directory, as on disk.
    std::string path;
    // The target of a link; empty for all else, and if it could not be read.
    std::string target;
    // How many listed paths lead through the link.
    std::uint64_t sealedFiles = 0;
    // Why something could not be examined or read; empty if that is unknown.
    std::string reason;
};

struct CheckReport {
    // As given.
    std::string gameDirectory;
    std::string productId;
    // The catalogues that were read, in that order. If the last has a failure code, it ended the
    // verification.
    std::vector<CheckedCatalogue> catalogues;
    // The files that were verified, grouped by catalogue.
    std::vector<CheckedFile> files;
    // Empty if the verification ended earlier.
    std::optional<RuntimeConfigurationVerdict> runtimeConfiguration;
    // What is wrong with runtime.conf or its certificate; empty if nothing is.
    std::string runtimeConfigurationFailure;
    // Why the verification ended early; empty if it did not. Then there is no search for additions.
    std::string failure;
    // The overall code, which is the exit status of verify.
    ResultCode code = ResultCode::Ok;
    // Sorted by kind, then by path.
    std::vector<Addition> additions;
};

// The number of files for each code.
[[nodiscard]] std::map<ResultCode, std::uint64_t> CountsByCode(const CheckReport& report);

// The exit status with --strict if additions are the only finding.
inline constexpr int kAdditionsStatus = 40;

// The exit status of verify. If that is 0, there are additions and `isStrict` is set:
// `kAdditionsStatus`.
[[nodiscard]] int StatusOf(const CheckReport& report, bool isStrict);

}  // namespace sealkeeper

#endif
