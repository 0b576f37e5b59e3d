// Lines and columns of a text.
#ifndef SEALKEEPER_CONFIG_TEXT_PLACE_H
#define SEALKEEPER_CONFIG_TEXT_PLACE_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace sealkeeper {

// Both count from 1; the column counts bytes. Only a line feed ends a line.
struct TextPlace {
    std::size_t line = 1;
    std::size_t column = 1;

    bool operator==(const TextPlace&) const = default;
};

// Where the lines of a text begin.
class TextLines {
  public:
    explicit TextLines(std::string_view text);

    // The place of the byte at `offset`, in logarithmic time. An offset past the end gives a column
    // past the end of the last line.
    [[nodiscard]] TextPlace PlaceOf(std::size_t offset) const;

    // The offset of the line feed that ends the line of `offset`, or the length of the text.
    [[nodiscard]] std::size_t LineEnd(std::size_t offset) const;

  private:
    std::vector<std::size_t> begins_;
    std::size_t length_;
};

}  // namespace sealkeeper

#endif
