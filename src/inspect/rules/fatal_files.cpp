#include "inspect/rules/fatal_files.h"

#include <algorithm>
#include <utility>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_format.h"
#include "inspect/report/utf8_text.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

Refusal TooLong(const SelectedFile& file) {
    return {ResultCode::CatalogueError, "Path too long for the catalogue: '" + file.path + "'."};
}

// In the order in which generate comes upon them.
std::optional<Refusal> RefusalAt(const SelectedFile& file, const AliasMap& aliases,
                                 const StandIn& standIn) {
    if (IsTooLong(file)) {
        return TooLong(file);
    }
    if (standIn.refusal && !IsUtf8(file.path)) {
        return standIn.refusal;
    }
    if (IsForbidden(file)) {
        return Refusal{ResultCode::CatalogueError,
                       "'" + file.path + "' cannot be read by this user."};
    }
    return IsTooLongByAlias(file, aliases) ? std::optional(TooLong(file)) : std::nullopt;
}

}  // namespace

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
    return file.sizeBytes > 0 && file.isLocked;
}

bool IsForbiddenButEmpty(const SelectedFile& file) {
    return file.sizeBytes == 0 && file.isLocked;
}

std::optional<Refusal> FindFatalFile(const Selection& selection) {
    std::optional<Refusal> refusal;
    const AliasMap aliases = WideAliases(selection.config.pathAliases);
    std::wstring firstPath;
    for (const SelectedFile& file : selection.files) {
        auto found = RefusalAt(file, aliases, selection.standIn);
        if (!found) {
            continue;
        }
        // Generate reads the files in the order of these.
        std::wstring path = Utf8ToWide(file.path);
        if (!refusal || path < firstPath) {
            refusal = std::move(found);
            firstPath = std::move(path);
        }
    }
    return refusal;
}

}  // namespace sealkeeper
