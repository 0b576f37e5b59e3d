#include "inspect/rules/fatal_files.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_format.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

bool IsTooLong(const SelectedFile& file) {
    return StoredFormOf(Utf8ToWide(file.path)).size() > entry_record::kMaxPathUnits;
}

bool IsTooLongByAlias(const SelectedFile& file, const AliasMap& aliases) {
    const std::u16string stored = StoredFormOf(Utf8ToWide(file.path));
    if (stored.size() > entry_record::kMaxPathUnits) {
        return false;
    }
    CatalogueEntry entry;
    std::copy(stored.begin(), stored.end(), entry.path.begin());
    return ApplyPathAlias(aliases, entry) != ResultCode::Ok;
}

bool IsForbidden(const SelectedFile& file) {
    return file.isRegular && file.sizeBytes > 0 && access(file.path.c_str(), R_OK) != 0 &&
           errno == EACCES;
}

std::optional<Refusal> FindFatalFile(const Selection& selection) {
    const AliasMap aliases = WideAliases(selection.config.pathAliases);
    for (const SelectedFile& file : selection.files) {
        if (IsTooLong(file) || IsTooLongByAlias(file, aliases)) {
            return Refusal{ResultCode::CatalogueError,
                           "Path too long for the catalogue: '" + file.path + "'."};
        }
        if (IsForbidden(file)) {
            return Refusal{ResultCode::CatalogueError,
                           "'" + file.path + "' cannot be read by this user."};
        }
    }
    return std::nullopt;
}

}  // namespace sealkeeper
