// Finds out what there is to say of a runtime.conf.
#ifndef SEALKEEPER_INSPECT_SHOW_RUNTIME_FACTS_H
#define SEALKEEPER_INSPECT_SHOW_RUNTIME_FACTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "inspect/show/shown_file.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// Adds what is known of the file with the bytes `stored` to `shown`, which has its path; `shown` is
// told its kind where the file can be taken for a runtime.conf at all. Returns what is wrong with
// it, nothing when it is sound.
[[nodiscard]] std::optional<InvalidReason> AddRuntimeFacts(
    std::vector<std::uint8_t> stored, const std::optional<std::string>& productId,
    ShownFile& shown);

}  // namespace sealkeeper

#endif
