// What the scan of a configuration text found and where, and where and why the scan ended. A
// document has only the values; explaining a text to its author also needs their places.
#ifndef SEALKEEPER_CONFIG_CONFIG_OUTLINE_H
#define SEALKEEPER_CONFIG_CONFIG_OUTLINE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/config_document.h"

namespace sealkeeper {

// All offsets are in bytes from the start of the text. An `end` is one past the last byte.
inline constexpr std::size_t kNoOffset = std::string_view::npos;
// No index into `sections` or `keys`.
inline constexpr std::size_t kNoIndex = std::string_view::npos;

// One body in braces. A section that occurs twice in the text has two.
struct OutlinedSection {
    // In lower case, as the document has it.
    std::string name;
    std::size_t begin = 0;
    // Of the '{'. The name as written begins at `begin` and has the length of `name`.
    std::size_t brace = 0;
    // Of the '}'; `kNoOffset` when there was none.
    std::size_t closingBrace = kNoOffset;
};

struct OutlinedKey {
    // In lower case, as the document has it.
    std::string name;
    std::size_t begin = 0;
    // Into `sections`.
    std::size_t section = kNoIndex;
};

enum class ConfigValueKind { List, PairTable, String, Number, Flag };

// What stood between two double quotes.
struct OutlinedText {
    // The quotes are not part of it.
    std::size_t begin = 0;
    std::size_t end = 0;
    // Its runs of backslashes are collapsed.
    std::string text;
};

struct OutlinedValue {
    ConfigValueKind kind = ConfigValueKind::Flag;
    // Into `sections`: the section that has the value. Its key may be in an earlier section, which
    // was closed before a value followed.
    std::size_t section = kNoIndex;
    // Into `keys`.
    std::size_t key = kNoIndex;
    // From its first byte to past the bracket, parenthesis, quote or semicolon that ends it, or
    // past the word.
    std::size_t begin = 0;
    std::size_t end = 0;
    // For a list, its elements without the empty ones. For a table of pairs, names and values in
    // turn, repeated names included. For a string, the string.
    std::vector<OutlinedText> texts;
    // As it is stored; 0 or 1 for a flag.
    std::int64_t number = 0;
};

struct OutlinedComment {
    // From its marker to past "*/", to its line feed, or to the end of the text.
    std::size_t begin = 0;
    std::size_t end = 0;
    // Of the "/*" that made it a block comment, which may be inside a line comment.
    std::size_t block = kNoOffset;
    // Of each further "/*" in it. Block comments do not nest, and "/*/" does not close one.
    std::vector<std::size_t> innerBlocks;
    bool isClosed = false;
};

// What ended a scan before the end of the text. The offset of `OutlinedStop` is that of the section
// name or key if the problem is there, else that of the value.
enum class ConfigStop {
    ColonForSectionName,
    // No space, tab, line break or colon after it.
    UnendedSectionName,
    NoOpeningBrace,
    EqualsSignForKey,
    // No space, tab, line break or equals sign after it.
    UnendedKey,
    // At the offset of the key.
    NoValue,
    NoClosingBracket,
    EmptyBrackets,
    LineFeedInElement,
    NoClosingParenthesis,
    EmptyParentheses,
    NoClosingQuote,
    NoSemicolon,
    // Neither true nor false, nor the start of any other value.
    UnknownWord,
};

struct OutlinedStop {
    ConfigStop why = ConfigStop::UnknownWord;
    std::size_t offset = 0;
};

// Everything in the order of the text.
struct ConfigOutline {
    std::vector<OutlinedSection> sections;
    std::vector<OutlinedKey> keys;
    std::vector<OutlinedValue> values;
    std::vector<OutlinedComment> comments;
    // Nothing when the scan reached the end.
    std::optional<OutlinedStop> stop;
    // What was still open when the scan ended: a section without its '}', a key without its value.
    std::size_t openSection = kNoIndex;
    std::size_t pendingKey = kNoIndex;
};

// Parses `text` as `ConfigDocument::ParseConfigText` does, with the same result, and fills
// `outline`, which must be empty, from the same scan.
[[nodiscard]] bool OutlineConfigText(std::string_view text, ConfigDocument& document,
                                     ConfigOutline& outline);

// The values of `key` in the sections called `section`, in the order of the text. Both names are in
// lower case. The pointers are valid until `outline` is changed.
[[nodiscard]] std::vector<const OutlinedValue*> ValuesOf(const ConfigOutline& outline,
                                                         std::string_view section,
                                                         std::string_view key);

}  // namespace sealkeeper

#endif
