#include "inspect/rules/fatal_files.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_format.h"
#include "inspect/report/utf8_text.h"
#include "inspect/rules/no_utf8_names.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

bool IsLocked(const SelectedFile& file) {
    return file.type == FileType::Regular && IsUtf8(file.path) &&
           access(file.path.c_str(), R_OK) != 0 && errno == EACCES;
}

Refusal TooLong(const SelectedFile& file) {
    return {ResultCode::CatalogueError, "Path too long for the catalogue: '" + file.path + "'."};
}

// In the order in which generate comes upon them.
std::optional<Refusal> RefusalAt(const SelectedFile& file, const AliasMap& aliases) {
    if (IsTooLong(file)) {
        return TooLong(file);
    }
    if (auto refusal = IsUtf8(file.path) ? std::nullopt : RefusalOfStandIn()) {
        return refusal;
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
    return file.sizeBytes > 0 && IsLocked(file);
}

bool IsForbiddenButEmpty(const SelectedFile& file) {
    return file.sizeBytes == 0 && IsLocked(file);
}

std::optional<Refusal> FindFatalFile(const Selection& selection) {
    const AliasMap aliases = WideAliases(selection.config.pathAliases);
    std::optional<Refusal> first;
    std::wstring firstPath;
    for (const SelectedFile& file : selection.files) {
        auto refusal = RefusalAt(file, aliases);
        if (!refusal) {
            continue;
        }
        // Generate reads the files in the order of these.
        std::wstring path = Utf8ToWide(file.path);
        if (!first || path < firstPath) {
            first = std::move(refusal);
            firstPath = std::move(path);
        }
    }
    return first;
}

}  // namespace sealkeeper
