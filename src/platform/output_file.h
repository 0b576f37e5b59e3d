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
// A regular file is replaced, and one that is not there is created: whatever ends the process or
// fails, the file has its old content, or `bytes`, whole and flushed to the disk. Links are
// followed and stay; what the last of them names is replaced or created. A file that is replaced
// keeps its mode, and its owner and group as far as the process may give them; its other hard links
// keep the old content. One that is created has 0666, less the process's file mode mask. Only a
// killed process leaves a temporary file behind, beside the file.
//
// Written in place, so that a failure leaves what was written until then, are: what is no regular
// file; the file that standard output or standard error goes to; a regular file that may be written
// but not replaced. A FIFO that nobody reads from cannot be opened.
[[nodiscard]] WriteOutcome WriteWholeFile(const std::string& path,
                                          std::span<const std::uint8_t> bytes);

}  // namespace sealkeeper

#endif
