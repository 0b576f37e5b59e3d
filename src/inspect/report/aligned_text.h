// Texts in columns.
#ifndef SEALKEEPER_INSPECT_REPORT_ALIGNED_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_ALIGNED_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace sealkeeper {

// Both give `text` as it is where it is wider than `width`. Bytes are counted: what is not ASCII
// belongs into the last column.

// With blanks after it.
[[nodiscard]] std::string AlignedLeft(std::string_view text, std::size_t width);

// With blanks before it.
[[nodiscard]] std::string AlignedRight(std::string_view text, std::size_t width);

}  // namespace sealkeeper

#endif
