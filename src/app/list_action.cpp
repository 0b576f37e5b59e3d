#include "app/list_action.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "app/console_log.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_reader.h"
#include "catalogue/hash_catalogue.h"
#include "platform/converter_watch.h"
#include "platform/file_io.h"
#include "platform/text_encoding.h"
#include "runtime/runtime_configuration_reader.h"

namespace sealkeeper {
namespace {

ResultCode FailUnread(const std::string& path) {
    Log(LogLevel::Error, "Could not locate the file on disk: '%s'.\n", path.c_str());
    return ResultCode::CatalogueIOError;
}

// A file open for reading, and the bytes read so far to tell its kind.
struct FileToList {
    SizedFile opened;
    std::vector<std::uint8_t> bytes;
};

ResultCode ReadEntries(FileToList file, EntryList& entries) {
    CatalogueFile read{std::move(file.bytes), {}};
    if (const ResultCode code = ReadCatalogueFile(std::move(file.opened), read);
        code != ResultCode::Ok) {
        return code;
    }
    // Nothing is verified, so no product id is expected.
    HashCatalogue catalogue("");
    return catalogue.GetUnverifiedCatalogueFileList(std::move(read.bytes), entries);
}

ResultCode ListCatalogue(FileToList file) {
    EntryList entries;
    if (const ResultCode code = ReadEntries(std::move(file), entries); code != ResultCode::Ok) {
        // Deliberately shown as a warning.
        Log(LogLevel::Warning, "GetUnverifiedCatalogueFileList() failed. Code %i (%s).\n",
            ResultCodeNumber(code), ResultFailureText(code));
        return code;
    }
    Log(LogLevel::Info, "%zu files in catalogue:\n", entries.size());
    const ConverterWatch converter;
    for (const auto& entry : entries) {
        const std::string path = WideToUtf8(entry->Path());
        if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
            return code;
        }
        Log(LogLevel::Info, "%s\n", path.c_str());
    }
    return ResultCode::Ok;
}

}  // namespace

ResultCode RunListAction(CommandLineOptions& options) {
    const std::string& path = options.listPath;
    Log(LogLevel::Info, "Performing list action on: '%s'.\n", path.c_str());
    auto opened = OpenSizedFile(path);
    if (!opened) {
        return FailUnread(path);
    }
    FileToList file{std::move(*opened), {}};
    if (!ReadOn(file.opened, catalogue_header::kSizeBytes, file.bytes)) {
        return FailUnread(path);
    }
    if (file.bytes.size() < catalogue_header::kSizeBytes) {
        return ResultCode::FileInvalid;
    }
    if (signed_file::HasMagic(file.bytes)) {
        return ListCatalogue(std::move(file));
    }
    return ReadOn(file.opened, kMaxRuntimeFileBytes, file.bytes)
               ? ListRuntimeConfiguration(file.bytes, options.runtimeConfiguration)
               : FailUnread(path);
}

}  // namespace sealkeeper
