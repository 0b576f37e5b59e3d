#include "inspect/rules/fatal_files.h"

#include <unistd.h>

#include <cerrno>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_format.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

bool IsTooLong(const SelectedFile& file) {
    return StoredFormOf(Utf8ToWide(file.path)).size() > entry_record::kMaxPathUnits;
}

bool IsForbidden(const SelectedFile& file) {
    return file.isRegular && file.sizeBytes > 0 && access(file.path.c_str(), R_OK) != 0 &&
           errno == EACCES;
}

std::optional<Refusal> FindFatalFile(const Selection& selection) {
    for (const SelectedFile& file : selection.files) {
        if (IsTooLong(file)) {
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
