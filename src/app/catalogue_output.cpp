#include "app/catalogue_output.h"

#include <utility>

#include "app/console_log.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

ResultCode CreateCatalogueFile(const GeneratePaths& paths, SigningMaterial& material,
                               HashCatalogue& catalogue, std::vector<FoundFile> files,
                               const AliasMap& aliases) {
    const std::string path = paths.CataloguePath();
    const std::wstring widePath = Utf8ToWide(path);
    if (WideToUtf8(widePath) != path) {
        Log(LogLevel::Error, "Failed to open file: '%s'.\n", path.c_str());
        return ResultCode::CatalogueIOError;
    }
    return catalogue.CreateCatalogue(material.privateKey.Get(), material.crlBytes, std::move(files),
                                     widePath, aliases);
}

}  // namespace sealkeeper
