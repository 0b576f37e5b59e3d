// What generate would do with a game under the rules of a configuration file.
#ifndef SEALKEEPER_INSPECT_RULES_RULES_REPORT_H
#define SEALKEEPER_INSPECT_RULES_RULES_REPORT_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "inspect/lint/rule_warning.h"

namespace sealkeeper {

// The rule that left out a file or a directory above it.
enum class LeftOutReason {
    // A name that begins with a dot.
    Hidden,
    Link,
    DanglingLink,
    ExcludedPath,
    ExcludedExtension,
    NoExtension,
    TooLarge,
    // A directory that is missing or cannot be read. Its contents are unknown.
    Unlistable,
    NotRegularFile,
    // A pattern matches it, but this user may not search the directory that it is in.
    Unreachable,
    // No include pattern matches it or a directory above it.
    NotIncluded,
};

// As reports print it: "hidden", "link" and so on.
[[nodiscard]] const char* LeftOutReasonText(LeftOutReason reason);

// The path of the game directory, which is judged only if it is unlistable.
inline constexpr const char* kGameItself = ".";

struct JudgedFile {
    // Relative to the game directory, as on disk.
    std::string path;
    std::uint64_t sizeBytes = 0;
    // Empty for a sealed file. Such a file is repeated as often as the catalogue lists it.
    std::optional<LeftOutReason> leftOut;
};

struct FileTotal {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
};

struct RulesTotals {
    FileTotal sealed;
    FileTotal leftOut;
    std::map<LeftOutReason, FileTotal> leftOutBy;
};

// Why generate would end without writing a catalogue.
struct Refusal {
    ResultCode code = ResultCode::Ok;
    // Generate's own message, or one of ours if it has none.
    std::string message;
};

struct RulesReport {
    std::string configFile;
    std::string gameDirectory;
    // Sorted by path.
    std::vector<JudgedFile> files;
    // Sorted by place.
    std::vector<RuleWarning> warnings;
    // If generate refuses before the walk over the game, there are no files.
    std::optional<Refusal> refusal = std::nullopt;
};

// "generate fails with 4 (InitFailedConfig): ", followed by the message.
[[nodiscard]] std::string RefusalText(const Refusal& refusal);

[[nodiscard]] RulesTotals TotalsOf(const RulesReport& report);

// The exit status; see command_status.h.
[[nodiscard]] int StatusOf(const RulesReport& report);

}  // namespace sealkeeper

#endif
