#include "inspect/check/link_target.h"

#include <filesystem>
#include <system_error>

namespace sealkeeper {

std::string LinkTarget(const std::string& path) {
    std::error_code failed;
    return std::filesystem::read_symlink(path, failed).string();
}

}  // namespace sealkeeper
