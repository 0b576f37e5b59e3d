#include "app/catalogue_search.h"

#include "platform/glob_result.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

std::vector<std::wstring> FindCatalogues(const std::wstring& directory) {
    constexpr int kNoFlags = 0;
    const GlobResult found(LiteralGlobPattern(WideToUtf8(directory)) + "*.bin", kNoFlags);
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
