// A file that a command was given, as far as it tells something without its content being parsed.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_EXAMINED_FILE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_EXAMINED_FILE_H

#include <optional>
#include <string>

#include "inspect/x509/file_kind.h"
#include "platform/file_system.h"

namespace sealkeeper {

struct ExaminedFile {
    // As it was given.
    std::string path;
    FileType type = FileType::Missing;
    // The bits of POSIX chmod; nothing where the system does not tell.
    std::optional<unsigned> mode;
    // Why it cannot be read; empty when it can.
    std::string reasonUnread;
    // Of what was looked into; that of a good private key is not.
    std::optional<FileKind> kind;
};

// Looks at the file at `path`, and not into it: `kind` is left open.
[[nodiscard]] ExaminedFile ExamineFile(const std::string& path);

// Tells of a file that could not be read, where nothing tells why yet.
void MarkUnread(ExaminedFile& file);

// "600".
[[nodiscard]] std::string OctalText(unsigned mode);

// "600 (rw-------)".
[[nodiscard]] std::string ModeText(unsigned mode);

}  // namespace sealkeeper

#endif
