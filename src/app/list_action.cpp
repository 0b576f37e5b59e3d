#include "app/list_action.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "app/console_log.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_reader.h"
#include "catalogue/hash_catalogue.h"
#include "platform/file_io.h"
#include "platform/text_encoding.h"
#include "runtime/runtime_configuration_reader.h"

namespace sealkeeper {
namespace {

ResultCode FailUnread(const std::string& path) {
    Log(LogLevel::Error, "Could not locate the file on disk: '%s'.\n", path.c_str());
    return ResultCode::CatalogueIOError;
}

ResultCode ReadEntries(const std::string& path, EntryList& entries) {
    std::vector<std::uint8_t> fileBytes;
    if (const ResultCode code = ReadCatalogueFile(path, fileBytes); code != ResultCode::Ok) {
        return code;
    }
    // Nothing is verified, so no product id is expected.
    HashCatalogue catalogue("");
    return catalogue.GetUnverifiedCatalogueFileList(std::move(fileBytes), entries);
}

ResultCode ListCatalogue(const std::string& path) {
    EntryList entries;
    if (const ResultCode code = ReadEntries(path, entries); code != ResultCode::Ok) {
        // Deliberately shown as a warning.
        Log(LogLevel::Warning, "GetUnverifiedCatalogueFileList() failed. Code %i (%s).\n",
            ResultCodeNumber(code), ResultFailureText(code));
        return code;
    }
    Log(LogLevel::Info, "%zu files in catalogue:\n", entries.size());
    for (const auto& entry : entries) {
        Log(LogLevel::Info, "%s\n", WideToUtf8(entry->Path()).c_str());
    }
    return ResultCode::Ok;
}

ResultCode ListSettings(const std::string& path, RuntimeConfiguration& configuration) {
    auto file = ReadFileStart(path, kMaxRuntimeFileBytes);
    return file ? ListRuntimeConfiguration(file->bytes, configuration) : FailUnread(path);
}

}  // namespace

ResultCode RunListAction(CommandLineOptions& options) {
    const std::string& path = options.listPath;
    Log(LogLevel::Info, "Performing list action on: '%s'.\n", path.c_str());
    const auto start = ReadFileStart(path, catalogue_header::kSizeBytes);
    if (!start) {
        return FailUnread(path);
    }
    if (start->bytes.size() < catalogue_header::kSizeBytes) {
        return ResultCode::FileInvalid;
    }
    return signed_file::HasMagic(start->bytes) ? ListCatalogue(path)
                                               : ListSettings(path, options.runtimeConfiguration);
}

}  // namespace sealkeeper
