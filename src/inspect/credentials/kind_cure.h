// What to do about a file that is of another kind than it should be.
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
    // As `ShellCommand` takes it, from the file to the one that is made of it; empty where there is
    // nothing to run.
    const char* command;
};

// The cure for a file of `kind` at `path`, of which another is made at `newPath`; nothing where
// `cures` has none.
[[nodiscard]] std::optional<Cure> FindCure(std::span<const KindCure> cures, FileKind kind,
                                           const std::string& path, const std::string& newPath);

}  // namespace sealkeeper

#endif
