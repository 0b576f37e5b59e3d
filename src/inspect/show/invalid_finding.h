// Words for what makes a file invalid.
#ifndef SEALKEEPER_INSPECT_SHOW_INVALID_FINDING_H
#define SEALKEEPER_INSPECT_SHOW_INVALID_FINDING_H

#include <cstdint>
#include <optional>
#include <string>

#include "inspect/show/shown_file.h"
#include "platform/file_io.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// `reason` is what a reader reported. `start` is the beginning of the file: at least the bytes that
// tell its kind, at most `kMaxBytesForCauses`.
[[nodiscard]] InvalidFinding FindingOf(const InvalidReason& reason, const FileStart& start);

// As above, for the file at `path`, whose size was `sizeBytes` when the reader saw it. Empty if it
// cannot be read again or its size has changed. Then `failure` says so, such as "cannot be read: No
// such file or directory".
[[nodiscard]] std::optional<InvalidFinding> FindingOfFile(const InvalidReason& reason,
                                                          const std::string& path,
                                                          std::uint64_t sizeBytes,
                                                          std::string& failure);

}  // namespace sealkeeper

#endif
