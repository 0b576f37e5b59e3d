// Pads texts for columns.
#ifndef SEALKEEPER_INSPECT_REPORT_ALIGNED_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_ALIGNED_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace sealkeeper {

// Both return `text` unchanged if it is wider than `width`. Widths are in bytes, so text outside
// ASCII belongs in the last column.

// Pads with blanks at the end.
[[nodiscard]] std::string AlignedLeft(std::string_view text, std::size_t width);

// Pads with blanks at the start.
[[nodiscard]] std::string AlignedRight(std::string_view text, std::size_t width);

}  // namespace sealkeeper

#endif
