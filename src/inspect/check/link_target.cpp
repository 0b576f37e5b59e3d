#include "inspect/check/link_target.h"

#include <filesystem>
#include <system_error>

namespace sealkeeper {

void ReadTarget(Addition& link) {
    std::error_code failure;
    link.target = std::filesystem::read_symlink(link.path, failure).string();
    if (failure) {
        link.reason = "its target cannot be read: " + failure.message();
    }
}

}  // namespace sealkeeper
