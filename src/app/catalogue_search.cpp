#include "app/catalogue_search.h"

#include <optional>

#include "catalogue/catalogue_format.h"
#include "platform/directory_listing.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

ResultCode FindCatalogues(const std::string& directory, std::vector<std::wstring>& names) {
    names.clear();
    std::optional<DirectoryEntries> entries;
    if (const ResultCode code = ListDirectory(directory.empty() ? "./" : directory, entries);
        code != ResultCode::Ok) {
        return code;
    }
    for (const DirectoryEntry& entry : entries.value_or(DirectoryEntries())) {
        if (!entry.name.starts_with('.') && entry.name.ends_with(kCatalogueExtension)) {
            names.push_back(Utf8ToWide(entry.name));
        }
    }
    return ResultCode::Ok;
}

// The error text has no such ending.
bool IsNameOfCatalogue(const std::wstring& name) {
    return name.ends_with(Utf8ToWide(kCatalogueExtension));
}

}  // namespace sealkeeper
