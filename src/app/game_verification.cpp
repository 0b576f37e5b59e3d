#include "app/game_verification.h"

#include <unistd.h>

#include <cerrno>
#include <iterator>
#include <utility>

#include "app/catalogue_search.h"
#include "app/certificates_directory.h"
#include "app/console_log.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "platform/file_system.h"
#include "platform/path_strings.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// Sets `directory` to the absolute game directory, ending in '/', or `systemError` to the errno of
// the failure.
ResultCode ResolveGameDirectory(const std::string& verifyDir, std::string& directory,
                                int& systemError) {
    auto resolved = ResolvePath(verifyDir);
    if (!resolved) {
        systemError = errno;
        Log(LogLevel::Error,
            "The provided working directory path couldn't be resolved, please make sure it's a valid path: '%s'.\n",
            verifyDir.c_str());
        return ResultCode::SealkeeperUsageError;
    }
    EnsureTrailingSlash(*resolved);
    directory = std::move(*resolved);
    return ResultCode::Ok;
}

// The names of the catalogues in the certificates directory of the game.
ResultCode FindCataloguesOf(const std::string& gameDirectory, std::vector<std::wstring>& names) {
    const ConverterWatch converter;
    const std::string directory = gameDirectory + kCertificatesDirectory;
    // Catalogue paths are wide text. A directory that cannot be converted becomes an error text,
    // which could be the name of another directory, so that one must not be opened.
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

// Sets `systemError` to the errno of a failure.
ResultCode ChangeInto(const std::string& directory, int& systemError) {
    if (chdir(directory.c_str()) != 0) {
        systemError = errno;
        Log(LogLevel::Error, "Failed to set working directory: '%s'.\n", directory.c_str());
        return ResultCode::InitFailedWorkingDirectory;
    }
    Log(LogLevel::Info, "Changed working directory to: '%s'.\n", directory.c_str());
    return ResultCode::Ok;
}

}  // namespace

GameVerification::GameVerification(const CommandLineOptions& options)
    : options_(options), catalogue_(options.productId) {}

ResultCode GameVerification::FindCatalogues() {
    if (const ResultCode code =
            ResolveGameDirectory(options_.verifyDir, directory_, directoryError_);
        code != ResultCode::Ok) {
        return code;
    }
    if (const ResultCode code = FindCataloguesOf(directory_, names_); code != ResultCode::Ok) {
        return code;
    }
    return ChangeInto(directory_, directoryError_);
}

ResultCode GameVerification::ReadCatalogues() {
    for (const std::wstring& name : names_) {
        VerifiedCatalogue& catalogue = catalogues_.emplace_back();
        catalogue.isNameUtf8 = IsNameOfCatalogue(name);
        catalogue.code = ReadCatalogue(name, catalogue.nameUtf8);
        catalogue.entriesSoFar = entries_.size();
        if (catalogue.code != ResultCode::Ok) {
            return catalogue.code;
        }
    }
    BeginFiles();
    return ResultCode::Ok;
}

// Appends the entries of the catalogue `name`, read from the game directory.
ResultCode GameVerification::ReadCatalogue(const std::wstring& name, std::string& shown) {
    constexpr ByteView kNoParent;
    constexpr ByteView kNoParentRevocationList;
    const ConverterWatch converter;
    shown = WideToUtf8(name);
    if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    Log(LogLevel::Info, "Reading the contents of: '%s'.\n", shown.c_str());
    CatalogueContents contents;
    const ResultCode code = catalogue_.ReadAndVerifyCatalogue(
        Utf8ToWide(kCertificatesDirectory) + name, kNoParent, kNoParentRevocationList, contents);
    if (code != ResultCode::Ok) {
        Log(LogLevel::Error, "Reading the catalogue '%s' file failed. Code %i (%s)\n",
            shown.c_str(), ResultCodeNumber(code), ResultFailureText(code));
        return code;
    }
    entries_.insert(entries_.end(), std::make_move_iterator(contents.entries.begin()),
                    std::make_move_iterator(contents.entries.end()));
    // Deliberate: the running total over all catalogues so far.
    Log(LogLevel::Info, "Added %zu file entries from '%s'\n", entries_.size(), shown.c_str());
    return ResultCode::Ok;
}

void GameVerification::BeginFiles() {
    Log(LogLevel::Info, "Will begin the validation of %zu files:\n", entries_.size());
    converter_.emplace();
    hasher_.emplace(
        entries_.size(),
        [this](std::size_t index) { return entries_[index]->OpenFile(entries_[index]->Path()); },
        MakeChunkHasher(options_.jobs));
}

ResultCode GameVerification::VerifyNextFile(FileVerdict& verdict) {
    constexpr MismatchHandler kNoHandler = nullptr;
    const StoredEntry& entry = *entries_[nextFile_];
    const std::wstring path = entry.Path();
    std::string shown = WideToUtf8(path);
    const ResultCode code = entry.VerifyNextFile(path, *hasher_, kNoHandler, nullptr);
    // Ends the line of dots, or of an earlier message without a line feed.
    EndConsoleLine();
    if (const ResultCode sound = converter_->RequireSound(); sound != ResultCode::Ok) {
        return sound;
    }
    while (catalogues_[catalogueIndex_].entriesSoFar <= nextFile_) {
        ++catalogueIndex_;
    }
    ++nextFile_;
    summary_.Add(code);
    verdict = {&entry, catalogueIndex_, std::move(shown), code};
    return ResultCode::Ok;
}

RuntimeConfigurationVerdict GameVerification::VerifyRuntimeConfiguration() {
    // Frees its threads and descriptors for what follows.
    hasher_.reset();
    const RuntimeConfigurationVerdict verdict =
        CheckRuntimeConfiguration(options_, directory_ + kCertificatesDirectory);
    runtimeCode_ = CodeOf(verdict);
    return verdict;
}

ResultCode GameVerification::Result() const {
    return runtimeCode_ != ResultCode::Ok ? runtimeCode_ : summary_.Result();
}

}  // namespace sealkeeper
