// What the scan of a configuration text took, where that stood, and where and why the scan ended. A
// document has the values alone; who explains a text needs their places as well.
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

// All offsets are bytes from the start of the text; an `end` is past the last byte.
inline constexpr std::size_t kNoOffset = std::string_view::npos;
// In place of an index into `sections` or `keys`.
inline constexpr std::size_t kNoIndex = std::string_view::npos;

// One body in braces. A name that stands twice in the text has two.
struct OutlinedSection {
    // In lower case, as the document has it.
    std::string name;
    std::size_t begin = 0;
    // Of the '{'. The name is as long at `begin` as it is above.
    std::size_t brace = 0;
    // Of the '}'; `kNoOffset` where none was taken.
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
    // Into `sections`: the one that has the value. Its key may stand in an earlier one, which was
    // closed before a value followed.
    std::size_t section = kNoIndex;
    // Into `keys`.
    std::size_t key = kNoIndex;
    // From its first byte to past the bracket, the parenthesis, the quote or the semicolon that
    // ends it, or past the word.
    std::size_t begin = 0;
    std::size_t end = 0;
    // Of a list its elements, without the empty ones; of a table of pairs name and value in turn,
    // those of repeated names too; of a string the string.
    std::vector<OutlinedText> texts;
    // As it is stored; 0 or 1 for a flag.
    std::int64_t number = 0;
};

struct OutlinedComment {
    // From its marker to past "*/", to its line feed, or to the end of the text.
    std::size_t begin = 0;
    std::size_t end = 0;
    // Of the "/*" that made it a block comment, which may stand inside a line comment.
    std::size_t block = kNoOffset;
    // Of each further "/*" in it, whose star closes nothing.
    std::vector<std::size_t> innerBlocks;
    bool isClosed = false;
};

// What ended a scan before the end of the text. The offset of `OutlinedStop` is that of the
// section's name or of the key for those that name it; else that of the value.
enum class ConfigStop {
    ColonForSectionName,
    // No blank or colon after it.
    UnendedSectionName,
    NoOpeningBrace,
    EqualsSignForKey,
    // No blank or equals sign after it.
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
    // Neither true nor false, nor the beginning of any other value.
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
    // Nothing when the scan came to the end.
    std::optional<OutlinedStop> stop;
    // What was begun where the scan ended: a section without its '}', a key without its value.
    std::size_t openSection = kNoIndex;
    std::size_t pendingKey = kNoIndex;
};

// Parses `text` as `ConfigDocument::ParseConfigText` does, with the same result, and fills
// `outline`, which is empty, with what the same scan went by.
[[nodiscard]] bool OutlineConfigText(std::string_view text, ConfigDocument& document,
                                     ConfigOutline& outline);

// The values that `key` has in the sections called `section`, in the order of the text. Both names
// are in lower case. The pointers are good as long as `outline` is not changed.
[[nodiscard]] std::vector<const OutlinedValue*> ValuesOf(const ConfigOutline& outline,
                                                         std::string_view section,
                                                         std::string_view key);

}  // namespace sealkeeper

#endif
