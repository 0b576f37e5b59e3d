// Shell commands, and paths in them, for people to copy.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_SHELL_WORD_H
#define SEALKEEPER_INSPECT_CREDENTIALS_SHELL_WORD_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `path` as a single word for a POSIX shell, quoted if necessary. No program takes it for an
// option.
[[nodiscard]] std::string ShellWord(const std::string& path);

// `pattern` with `in` and `out` as shell words in place of "{in}" and "{out}".
[[nodiscard]] std::string ShellCommand(std::string_view pattern, const std::string& in,
                                       const std::string& out);

}  // namespace sealkeeper

#endif
