// Cures for a file that is of the wrong kind.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_KIND_CURE_H
#define SEALKEEPER_INSPECT_CREDENTIALS_KIND_CURE_H

#include <optional>
#include <span>
#include <string>

#include "inspect/credentials/credential_finding.h"
#include "inspect/x509/file_kind.h"

namespace sealkeeper {

struct KindCure {
    FileKind kind;
    const char* text;
    // A pattern for `ShellCommand`, from the file to the converted one; empty if there is nothing
    // to run.
    const char* command;
};

// The cure for a file of `kind` at `path`, with `newPath` for the converted file. Empty if `cures`
// has none for the kind.
[[nodiscard]] std::optional<Cure> FindCure(std::span<const KindCure> cures, FileKind kind,
                                           const std::string& path, const std::string& newPath);

}  // namespace sealkeeper

#endif
