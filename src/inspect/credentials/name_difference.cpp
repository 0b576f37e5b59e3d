#include "inspect/credentials/name_difference.h"

#include <algorithm>

#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

bool IsWhiteSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool IsOutsideAscii(char character) {
    return static_cast<unsigned char>(character) > 0x7F;
}

template <typename Predicate>
std::string Without(std::string text, Predicate isLeftOut) {
    text.erase(std::remove_if(text.begin(), text.end(), isLeftOut), text.end());
    return text;
}

}  // namespace

NameDifference DifferenceOf(const std::string& left, const std::string& right) {
    if (left == right) {
        return NameDifference::None;
    }
    std::string a = LowerCasedAscii(left);
    std::string b = LowerCasedAscii(right);
    if (a == b) {
        return NameDifference::LetterCase;
    }
    a = Without(std::move(a), IsWhiteSpace);
    b = Without(std::move(b), IsWhiteSpace);
    if (a == b) {
        return NameDifference::WhiteSpace;
    }
    const bool isSameInAscii = Without(a, IsOutsideAscii) == Without(b, IsOutsideAscii);
    return isSameInAscii ? NameDifference::OutsideAscii : NameDifference::Other;
}

}  // namespace sealkeeper
