#include "app/catalogue_output.h"

#include <utility>

#include "app/console_log.h"
#include "platform/converter_watch.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

ResultCode CreateCatalogueFile(const GeneratePaths& paths, SigningMaterial& material,
                               HashCatalogue& catalogue, std::vector<FoundFile> files,
                               const AliasMap& aliases) {
    const std::string path = paths.CataloguePath();
    const ConverterWatch converter;
    const std::wstring widePath = Utf8ToWide(path);
    const bool hasWideForm = WideToUtf8(widePath) == path;
    if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    if (!hasWideForm) {
        Log(LogLevel::Error, "Failed to open file: '%s'.\n", path.c_str());
        return ResultCode::CatalogueIOError;
    }
    return catalogue.CreateCatalogue(material.privateKey.Get(), material.crlBytes, std::move(files),
                                     widePath, aliases);
}

}  // namespace sealkeeper
