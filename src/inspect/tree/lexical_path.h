// Paths of the game compared by what they name, as far as their text tells.
#ifndef SEALKEEPER_INSPECT_TREE_LEXICAL_PATH_H
#define SEALKEEPER_INSPECT_TREE_LEXICAL_PATH_H

#include <string>
#include <string_view>

namespace sealkeeper {

// `path`, relative to the game directory, without dot components, repeated slashes and a slash at
// its end: "./a//b/../c/" is "a/c". Empty for the game directory itself. What leaves it begins with
// "..". Links are not looked at.
[[nodiscard]] std::string LexicalPath(std::string_view path);

// Whether a lexical path leaves the game directory.
[[nodiscard]] bool LeavesGame(std::string_view lexicalPath);

// The directory that a lexical path lies in; empty for the game directory.
[[nodiscard]] std::string_view ParentOf(std::string_view lexicalPath);

// The last name of a lexical path.
[[nodiscard]] std::string_view NameOf(std::string_view lexicalPath);

}  // namespace sealkeeper

#endif
