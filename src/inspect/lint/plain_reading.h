// A stretch of a configuration file as a person reads it, and as an editor colours it: comments and
// quotes count everywhere. The scan looks for comments between values only, and inside brackets for
// nothing but quotes. Where the two differ, something is likely not what was meant.
#ifndef SEALKEEPER_INSPECT_LINT_PLAIN_READING_H
#define SEALKEEPER_INSPECT_LINT_PLAIN_READING_H

#include <string>
#include <string_view>
#include <vector>

namespace sealkeeper {

enum class PlainReading : char {
    Code,
    // The quotes themselves, too. A quote without its partner ends with its line.
    Quoted,
    // The markers, too, but not the line feed after a line comment.
    Comment,
};

// One for each byte of `text`.
[[nodiscard]] std::vector<PlainReading> ReadPlainly(std::string_view text);

// `text` with a blank in place of every byte of a comment but line feeds.
[[nodiscard]] std::string WithoutComments(std::string_view text);

}  // namespace sealkeeper

#endif
