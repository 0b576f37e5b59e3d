// Normalises paths of the game by their text alone.
#ifndef SEALKEEPER_INSPECT_TREE_LEXICAL_PATH_H
#define SEALKEEPER_INSPECT_TREE_LEXICAL_PATH_H

#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace sealkeeper {

// Lexical paths, which views can be looked up in.
using LexicalPaths = std::set<std::string, std::less<>>;

// `path`, relative to the game directory, without dot components, repeated slashes and a trailing
// slash: "./a//b/../c/" becomes "a/c". Empty for the game directory itself. A path that leaves the
// game begins with "..". Links are not resolved.
[[nodiscard]] std::string LexicalPath(std::string_view path);

// Whether a lexical path leaves the game directory.
[[nodiscard]] bool LeavesGame(std::string_view lexicalPath);

// The directory of a lexical path; empty if that is the game directory.
[[nodiscard]] std::string_view ParentOf(std::string_view lexicalPath);

// The last component of a lexical path.
[[nodiscard]] std::string_view NameOf(std::string_view lexicalPath);

}  // namespace sealkeeper

#endif
