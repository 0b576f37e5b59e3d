// Facts about a file on the command line that need no parsing.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_EXAMINED_FILE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_EXAMINED_FILE_H

#include <optional>
#include <string>

#include "inspect/x509/file_kind.h"
#include "platform/file_system.h"

namespace sealkeeper {

struct ExaminedFile {
    // As given.
    std::string path;
    FileType type = FileType::Missing;
    // Permission bits as in chmod(2); empty if the system does not report them.
    std::optional<unsigned> mode;
    // Why the file cannot be read; empty if it can.
    std::string reasonUnread;
    // Empty if the content was not examined. A good private key's never is.
    std::optional<FileKind> kind;
};

// Examines the file at `path` without reading it. Leaves `kind` empty.
[[nodiscard]] ExaminedFile ExamineFile(const std::string& path);

// Records why the file could not be read, unless a reason is known already.
void MarkUnread(ExaminedFile& file);

// "600".
[[nodiscard]] std::string OctalText(unsigned mode);

// "600 (rw-------)".
[[nodiscard]] std::string ModeText(unsigned mode);

}  // namespace sealkeeper

#endif
