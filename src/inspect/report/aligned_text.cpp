#include "inspect/report/aligned_text.h"

#include <algorithm>

namespace sealkeeper {
namespace {

std::string Blanks(std::string_view text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ');
}

}  // namespace

std::string AlignedLeft(std::string_view text, std::size_t width) {
    return std::string(text) + Blanks(text, width);
}

std::string AlignedRight(std::string_view text, std::size_t width) {
    return Blanks(text, width) + std::string(text);
}

}  // namespace sealkeeper
