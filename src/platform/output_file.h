// Whole files written at once.
#ifndef SEALKEEPER_PLATFORM_OUTPUT_FILE_H
#define SEALKEEPER_PLATFORM_OUTPUT_FILE_H

#include <cstdint>
#include <span>
#include <string>

namespace sealkeeper {

enum class WriteOutcome { Written, OpenFailed, WriteFailed, CloseFailed };

// Makes `bytes` the content of the file at `path`.
//
// A regular file is replaced as a whole, and a missing one is created. Whatever fails or ends the
// process, the file has either its old content or all of `bytes`, flushed to the disk. Links are
// followed and kept; the file at their end is replaced or created. A replaced file keeps its mode,
// and its owner and group as far as the process may set them; its other hard links keep the old
// content. A created file has mode 0666, less the umask. Only a killed process leaves a temporary
// file beside it.
//
// Some files are written in place, so that a failure leaves what was written until then: anything
// but a regular file; the file that standard output or standard error goes to; a regular file that
// may be written but not replaced. A FIFO that nobody reads from cannot be opened.
[[nodiscard]] WriteOutcome WriteWholeFile(const std::string& path,
                                          std::span<const std::uint8_t> bytes);

}  // namespace sealkeeper

#endif
