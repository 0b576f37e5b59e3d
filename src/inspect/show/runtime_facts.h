// Gathers what `show` reports about a runtime.conf.
#ifndef SEALKEEPER_INSPECT_SHOW_RUNTIME_FACTS_H
#define SEALKEEPER_INSPECT_SHOW_RUNTIME_FACTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/show/shown_file.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// Adds the facts about the file contents `stored` to `shown`, which must have the path. Sets the
// kind if the file looks like a runtime.conf at all. Returns what is wrong with it; empty if it is
// sound.
[[nodiscard]] std::optional<InvalidReason> AddRuntimeFacts(
    std::vector<std::uint8_t> stored, const std::optional<std::string>& productId,
    ShownFile& shown);

}  // namespace sealkeeper

#endif
