// Reads a part of a configuration file as a person would, or an editor's highlighter: comments and
// quotes count everywhere. The scanner knows comments only between values, and inside brackets it
// looks only for quotes. Where the two differ, something is likely not as meant.
#ifndef SEALKEEPER_INSPECT_LINT_PLAIN_READING_H
#define SEALKEEPER_INSPECT_LINT_PLAIN_READING_H

#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

enum class PlainReading : char {
    Code,
    // Includes the quotes. An unclosed quote ends with its line.
    Quoted,
    // Includes the comment marks, but not the line feed after a line comment.
    Comment,
};

// One element for each byte of `text`.
[[nodiscard]] std::vector<PlainReading> ReadPlainly(std::string_view text);

// `text` with comments blanked out. Line feeds are kept.
[[nodiscard]] std::string WithoutComments(std::string_view text);

}  // namespace sealkeeper

#endif
