// What `show` was asked for.
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
    // How many entries are shown; all where there is none.
    std::optional<std::uint64_t> limit;
    bool isJson = false;
};

}  // namespace sealkeeper

#endif
