#include "app/catalogue_search.h"

#include "catalogue/catalogue_format.h"
#include "platform/glob_result.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

std::vector<std::wstring> FindCatalogues(const std::string& directory) {
    constexpr int kNoFlags = 0;
    const GlobResult found(LiteralGlobPattern(directory) + "*" + kCatalogueExtension, kNoFlags);
    std::vector<std::wstring> names;
    if (found.Status() == 0) {
        for (const std::string path : found.Paths()) {
            // A backslash is part of a name here.
            names.push_back(Utf8ToWide(path.substr(path.rfind('/') + 1)));
        }
    }
    return names;
}

}  // namespace sealkeeper
