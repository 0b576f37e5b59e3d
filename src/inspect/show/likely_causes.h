// Guesses what happened to a file that is neither a sound catalogue nor a sound runtime.conf.
#ifndef SEALKEEPER_INSPECT_SHOW_LIKELY_CAUSES_H
#define SEALKEEPER_INSPECT_SHOW_LIKELY_CAUSES_H

#include <cstdint>
#include <string>
#include <vector>

#include "platform/file_io.h"

namespace sealkeeper {

// How much of the file is examined.
inline constexpr std::uint64_t kMaxBytesForCauses = 67'108'864;

// Sentences without a full stop, the most likely first; empty if nothing can be said. `file` is the
// start of the file, at most `kMaxBytesForCauses`.
[[nodiscard]] std::vector<std::string> LikelyCausesOf(const FileStart& file);

}  // namespace sealkeeper

#endif
