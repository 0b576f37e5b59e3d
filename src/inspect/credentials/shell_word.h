// Paths in commands that a person may copy to a shell.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_SHELL_WORD_H
#define SEALKEEPER_INSPECT_CREDENTIALS_SHELL_WORD_H

#include <string>

namespace sealkeeper {

// `path` as one word for a POSIX shell that no program takes for an option: quoted where it must
// be.
[[nodiscard]] std::string ShellWord(const std::string& path);

}  // namespace sealkeeper

#endif
