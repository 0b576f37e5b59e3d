#include "config/text_place.h"

#include <algorithm>

namespace sealkeeper {

TextLines::TextLines(std::string_view text) : begins_{0}, length_(text.size()) {
    for (std::size_t lineFeed = text.find('\n'); lineFeed != std::string_view::npos;
         lineFeed = text.find('\n', lineFeed + 1)) {
        begins_.push_back(lineFeed + 1);
    }
}

TextPlace TextLines::PlaceOf(std::size_t offset) const {
    const auto next = std::upper_bound(begins_.begin(), begins_.end(), offset);
    const auto line = static_cast<std::size_t>(next - begins_.begin());
    return {line, offset - begins_[line - 1] + 1};
}

std::size_t TextLines::LineEnd(std::size_t offset) const {
    const auto next = std::upper_bound(begins_.begin(), begins_.end(), offset);
    return next == begins_.end() ? length_ : *next - 1;
}

}  // namespace sealkeeper
