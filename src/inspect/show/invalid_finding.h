// Says in words what makes a file invalid.
#ifndef SEALKEEPER_INSPECT_SHOW_INVALID_FINDING_H
#define SEALKEEPER_INSPECT_SHOW_INVALID_FINDING_H

#include <cstdint>
#include <optional>
#include <string>

#include "inspect/show/shown_file.h"
#include "platform/file_io.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// `reason` is what a reader told of the file that begins with `start`: at least the bytes that the
// reader looked at to tell the file's kind, `kMaxBytesForCauses` at the most.
[[nodiscard]] InvalidFinding FindingOf(const InvalidReason& reason, const FileStart& start);

// The same for the file at `path`, which had `sizeBytes` when the reader looked at it. Nothing when
// it cannot be read again or has another size now; `failure` then says so, as "cannot be read: No
// such file or directory".
[[nodiscard]] std::optional<InvalidFinding> FindingOfFile(const InvalidReason& reason,
                                                          const std::string& path,
                                                          std::uint64_t sizeBytes,
                                                          std::string& failure);

}  // namespace sealkeeper

#endif
