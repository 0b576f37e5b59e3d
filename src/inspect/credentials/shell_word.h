// Commands, and paths in them, that a person may copy to a shell.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_SHELL_WORD_H
#define SEALKEEPER_INSPECT_CREDENTIALS_SHELL_WORD_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `path` as one word for a POSIX shell that no program takes for an option: quoted where it must
// be.
[[nodiscard]] std::string ShellWord(const std::string& path);

// `pattern` with the words for the paths `in` and `out` wherever "{in}" and "{out}" stand in it.
[[nodiscard]] std::string ShellCommand(std::string_view pattern, const std::string& in,
                                       const std::string& out);

}  // namespace sealkeeper

#endif
