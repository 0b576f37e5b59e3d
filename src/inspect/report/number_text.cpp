#include "inspect/report/number_text.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace sealkeeper {

std::string GroupedNumber(std::uint64_t number) {
    constexpr std::size_t kGroup = 3;
    std::string text = std::to_string(number);
    for (std::size_t end = text.size(); end > kGroup; end -= kGroup) {
        text.insert(end - kGroup, 1, ',');
    }
    return text;
}

std::string SizeText(std::uint64_t bytes) {
    constexpr double kStep = 1000;
    // One decimal is shown: from here on it would read 1000.0, so the next unit is used.
    constexpr double kRoundsUpToStep = 999.95;
    constexpr std::array<const char*, 6> kUnits = {"kB", "MB", "GB", "TB", "PB", "EB"};
    if (bytes < static_cast<std::uint64_t>(kStep)) {
        return CountText(bytes, "byte");
    }
    double size = static_cast<double>(bytes) / kStep;
    std::size_t unit = 0;
    while (size >= kRoundsUpToStep && unit + 1 < kUnits.size()) {
        size /= kStep;
        ++unit;
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f %s", size, kUnits[unit]);
    return text.data();
}

std::string CountText(std::uint64_t count, std::string_view singular) {
    std::string text = GroupedNumber(count) + " ";
    text += singular;
    return count == 1 ? text : text + "s";
}

}  // namespace sealkeeper
