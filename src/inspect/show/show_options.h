// The options of `show`.
#ifndef SEALKEEPER_INSPECT_SHOW_SHOW_OPTIONS_H
#define SEALKEEPER_INSPECT_SHOW_SHOW_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>

namespace sealkeeper {

struct ShowOptions {
    std::string path;
    std::optional<std::string> productId;
    bool hasDigests = false;
    // The number of entries to show; all if empty.
    std::optional<std::uint64_t> limit;
    bool isJson = false;
};

}  // namespace sealkeeper

#endif
