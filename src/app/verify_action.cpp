#include "app/verify_action.h"

#include <unistd.h>

#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "app/catalogue_search.h"
#include "app/certificates_directory.h"
#include "app/console_log.h"
#include "app/runtime_configuration_check.h"
#include "app/usage_text.h"
#include "app/verification_summary.h"
#include "catalogue/hash_catalogue.h"
#include "catalogue/hashing/file_hasher.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "platform/converter_watch.h"
#include "platform/file_system.h"
#include "platform/path_strings.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// The absolute game directory, ending in '/'; nothing, logged, when it does not resolve.
std::optional<std::string> ResolveVerifiedDirectory(const std::string& verifyDir) {
    auto resolved = ResolvePath(verifyDir);
    if (!resolved) {
        Log(LogLevel::Error,
            "The provided working directory path couldn't be resolved, please make sure it's a valid path: '%s'.\n",
            verifyDir.c_str());
        PrintUsage(HelpText::Omitted);
        return std::nullopt;
    }
    EnsureTrailingSlash(*resolved);
    return resolved;
}

// The names of the catalogues in the certificates directory of the game.
ResultCode FindCataloguesOf(const std::string& gameDirectory, std::vector<std::wstring>& names) {
    const ConverterWatch converter;
    const std::string directory = gameDirectory + kCertificatesDirectory;
    // Catalogue paths are wide text. A directory that has no such form is not looked for under the
    // error text that stands for it, which could name another one.
    const std::string wideForm = WideToUtf8(Utf8ToWide(gameDirectory)) + kCertificatesDirectory;
    if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    if (wideForm != directory || GetFileType(directory) != FileType::Directory) {
        Log(LogLevel::Error, "The provided path: '%s' does not match with existing directories.\n",
            wideForm.c_str());
        return ResultCode::SealkeeperIOError;
    }
    Log(LogLevel::Info, "Looking for the catalogue to validate under: '%s'.\n", directory.c_str());
    if (const ResultCode code = FindCatalogues(directory, names); code != ResultCode::Ok) {
        return code;
    }
    if (names.empty()) {
        Log(LogLevel::Error, "Couldn't find the .bin file under: '%s'.\n", directory.c_str());
        return ResultCode::SealkeeperIOError;
    }
    return converter.RequireSound();
}

ResultCode ChangeInto(const std::string& directory) {
    if (chdir(directory.c_str()) != 0) {
        Log(LogLevel::Error, "Failed to set working directory: '%s'.\n", directory.c_str());
        return ResultCode::InitFailedWorkingDirectory;
    }
    Log(LogLevel::Info, "Changed working directory to: '%s'.\n", directory.c_str());
    return ResultCode::Ok;
}

// Appends the entries of the catalogue `name`, read from the game directory, to `entries`.
ResultCode AppendCatalogue(HashCatalogue& catalogue, const std::wstring& name, EntryList& entries) {
    constexpr ByteView kNoParent;
    constexpr ByteView kNoParentRevocationList;
    const ConverterWatch converter;
    const std::string shown = WideToUtf8(name);
    if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    Log(LogLevel::Info, "Reading the contents of: '%s'.\n", shown.c_str());
    CatalogueContents contents;
    const ResultCode code = catalogue.ReadAndVerifyCatalogue(
        Utf8ToWide(kCertificatesDirectory) + name, kNoParent, kNoParentRevocationList, contents);
    if (code != ResultCode::Ok) {
        Log(LogLevel::Error, "Reading the catalogue '%s' file failed. Code %i (%s)\n",
            shown.c_str(), ResultCodeNumber(code), ResultFailureText(code));
        return code;
    }
    entries.insert(entries.end(), std::make_move_iterator(contents.entries.begin()),
                   std::make_move_iterator(contents.entries.end()));
    // Deliberately a running total over all catalogues so far.
    Log(LogLevel::Info, "Added %zu file entries from '%s'\n", entries.size(), shown.c_str());
    return ResultCode::Ok;
}

// Adds the verdict on the next file of `hasher`, that of `entry`, to `summary`. Fails, logged, when
// `converter` has failed: under another path there may be another file, even an intact one.
ResultCode VerifyEntry(const StoredEntry& entry, FileHasher& hasher,
                       const ConverterWatch& converter, VerificationSummary& summary) {
    constexpr MismatchHandler kNoHandler = nullptr;
    const std::wstring path = entry.Path();
    const std::string shown = WideToUtf8(path);
    const ResultCode verdict = entry.VerifyNextFile(path, hasher, kNoHandler, nullptr);
    // Ends the progress line or the verdict before: neither message below has a line feed.
    EndConsoleLine();
    if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    if (verdict != ResultCode::Ok) {
        Log(LogLevel::Error, "[Failure] Failed to verify '%s' - Code %i (%s).", shown.c_str(),
            ResultCodeNumber(verdict), ResultFailureText(verdict));
    } else {
        Log(LogLevel::Info, "[Success] Successfully verified '%s'.", shown.c_str());
    }
    summary.Add(verdict);
    return ResultCode::Ok;
}

// Prints the verdicts and their summary. Fails, logged, when the system fails to convert a path,
// whose file is then neither missing nor intact.
ResultCode VerifyEntries(const EntryList& entries, std::size_t jobs, VerificationSummary& summary) {
    Log(LogLevel::Info, "Will begin the validation of %zu files:\n", entries.size());
    const ConverterWatch converter;
    FileHasher hasher(
        entries.size(),
        [&entries](std::size_t index) { return entries[index]->OpenFile(entries[index]->Path()); },
        MakeChunkHasher(jobs));
    for (const auto& entry : entries) {
        if (const ResultCode code = VerifyEntry(*entry, hasher, converter, summary);
            code != ResultCode::Ok) {
            return code;
        }
    }
    EndConsoleLine();
    EndConsoleLine();
    summary.Print();
    return ResultCode::Ok;
}

}  // namespace

ResultCode RunVerifyAction(const CommandLineOptions& options) {
    const auto gameDirectory = ResolveVerifiedDirectory(options.verifyDir);
    if (!gameDirectory) {
        return ResultCode::SealkeeperUsageError;
    }
    std::vector<std::wstring> names;
    if (const ResultCode code = FindCataloguesOf(*gameDirectory, names); code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = ChangeInto(*gameDirectory); code != ResultCode::Ok) {
        return code;
    }
    HashCatalogue catalogue(options.productId);
    EntryList entries;
    for (const std::wstring& name : names) {
        if (const ResultCode code = AppendCatalogue(catalogue, name, entries);
            code != ResultCode::Ok) {
            return code;
        }
    }
    VerificationSummary summary;
    if (const ResultCode code = VerifyEntries(entries, options.jobs, summary);
        code != ResultCode::Ok) {
        return code;
    }
    const ResultCode runtimeCode =
        CheckRuntimeConfiguration(options, *gameDirectory + kCertificatesDirectory);
    return runtimeCode != ResultCode::Ok ? runtimeCode : summary.Result();
}

}  // namespace sealkeeper
