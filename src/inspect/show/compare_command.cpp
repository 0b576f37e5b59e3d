#include "inspect/show/compare_command.h"

#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "inspect/report/logged_error.h"
#include "inspect/report/unread_reason.h"
#include "inspect/show/catalogue_difference.h"
#include "inspect/show/compare_report.h"
#include "inspect/show/invalid_finding.h"
#include "platform/converter_watch.h"
#include "platform/file_io.h"

namespace sealkeeper {
namespace {

constexpr int kSame = 0;
constexpr int kDifferent = 1;
constexpr int kTrouble = 2;

struct CompareOptions {
    ComparedPaths paths;
    bool isJson = false;
};

std::string WhyInvalid(const InvalidReason& reason, const std::string& path,
                       std::uint64_t sizeBytes) {
    // Without the magic it may still be a runtime.conf.
    if (reason.field == InvalidField::Magic) {
        return "is no catalogue; the command show may tell what it is";
    }
    std::string failure;
    const auto finding = FindingOfFile(reason, path, sizeBytes, failure);
    return finding ? "is no valid catalogue: " + finding->field + ", at offset " +
                         std::to_string(finding->offset) + ", " + finding->message
                   : failure;
}

// Empty if `path` is no valid catalogue; then `failure` says why.
std::optional<ComparedCatalogue> ReadToCompare(const std::string& path, std::string& failure) {
    errno = 0;
    auto opened = OpenSizedFile(path);
    const std::uint64_t sizeBytes = opened ? opened->sizeBytes : 0;
    ComparedCatalogue catalogue;
    InvalidReason reason;
    const ResultCode code = opened ? ReadCatalogueFile(std::move(*opened), catalogue.file, &reason)
                                   : ResultCode::CatalogueIOError;
    if (code == ResultCode::CatalogueIOError) {
        failure = CannotBeRead(path, errno);
        return std::nullopt;
    }
    if (code == ResultCode::Ok) {
        if (auto entries = EntriesToCompare(catalogue.file, reason)) {
            catalogue.entries = std::move(*entries);
            return catalogue;
        }
    }
    failure = WhyInvalid(reason, path, sizeBytes);
    return std::nullopt;
}

int FailToCompare(const CompareOptions& options, const std::string& path, const std::string& reason,
                  Console& console) {
    const std::string failure = "'" + path + "': " + reason;
    if (options.isJson) {
        WriteCompareFailureJson(options.paths, failure, kTrouble, console);
    }
    console.Fail(failure);
    return kTrouble;
}

int Compare(const CompareOptions& options, Console& console) {
    const ConverterWatch converter;
    std::string failure;
    auto before = ReadToCompare(options.paths.before, failure);
    if (!before) {
        return FailToCompare(options, options.paths.before, failure, console);
    }
    auto after = ReadToCompare(options.paths.after, failure);
    if (!after) {
        return FailToCompare(options, options.paths.after, failure, console);
    }
    // Otherwise the converter's error text would be compared in place of names.
    if (converter.RequireSound() != ResultCode::Ok) {
        return FailToCompare(options, options.paths.after, LastLoggedError(), console);
    }
    const CatalogueDifference difference = DifferenceOf(std::move(*before), std::move(*after));
    if (options.isJson) {
        WriteCompareJson(options.paths, difference, console);
    } else {
        WriteCompareText(options.paths, difference, console);
    }
    return difference.HasEntries() || !difference.others.empty() ? kDifferent : kSame;
}

}  // namespace

void AddCompareCommand(CommandLine& commandLine, Console& console) {
    const auto options = std::make_shared<CompareOptions>();
    Command command =
        commandLine.AddCommand("compare", "Say which files two catalogues list differently");
    command.AddOperand("OLD", "The catalogue before", options->paths.before);
    command.AddOperand("NEW", "The catalogue after", options->paths.after);
    command.AddFlag("--json", "Report as JSON", options->isJson);
    command.SetRun([options, &console] { return Compare(*options, console); });
}

}  // namespace sealkeeper
