#include "app/list_action.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "app/console_log.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/hash_catalogue.h"
#include "platform/file_io.h"
#include "platform/text_encoding.h"
#include "runtime/runtime_configuration_reader.h"

namespace sealkeeper {
namespace {

bool HasCatalogueMagic(const std::vector<std::uint8_t>& fileBytes) {
    return std::equal(signed_file::kMagic.begin(), signed_file::kMagic.end(), fileBytes.begin());
}

ResultCode ListCatalogue(std::vector<std::uint8_t> fileBytes) {
    // Nothing is verified, so no product id is expected.
    HashCatalogue catalogue("");
    EntryList entries;
    const ResultCode code = catalogue.GetUnverifiedCatalogueFileList(std::move(fileBytes), entries);
    if (code != ResultCode::Ok) {
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

}  // namespace

ResultCode RunListAction(CommandLineOptions& options) {
    Log(LogLevel::Info, "Performing list action on: '%s'.\n", options.listPath.c_str());
    auto fileBytes = ReadWholeFile(options.listPath);
    if (!fileBytes) {
        Log(LogLevel::Error, "Could not locate the file on disk: '%s'.\n",
            options.listPath.c_str());
        return ResultCode::CatalogueIOError;
    }
    if (fileBytes->size() < catalogue_header::kSizeBytes) {
        return ResultCode::FileInvalid;
    }
    if (HasCatalogueMagic(*fileBytes)) {
        return ListCatalogue(std::move(*fileBytes));
    }
    return ListRuntimeConfiguration(*fileBytes, options.runtimeConfiguration);
}

}  // namespace sealkeeper
