#include "inspect/lint/nearest_name.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace sealkeeper {
namespace {

constexpr std::size_t kCharactersPerChange = 4;

bool AreSwapped(std::string_view left, std::string_view right, std::size_t i, std::size_t j) {
    return i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1];
}

// The optimal string alignment distance, with three rows of its table in memory.
std::size_t DistanceOf(std::string_view left, std::string_view right) {
    std::vector<std::size_t> beforeLast(right.size() + 1);
    std::vector<std::size_t> last(right.size() + 1);
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, row);
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (left[i - 1] == right[j - 1] ? 0U : 1U);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (AreSwapped(left, right, i, j)) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return row[right.size()];
}

}  // namespace

std::string NearestName(std::string_view name, const std::vector<std::string>& names) {
    std::string nearest;
    std::size_t least = name.size();
    for (const std::string& known : names) {
        const std::size_t limit = known.size() / kCharactersPerChange;
        // Skips names that cannot be near, so that a long one costs no time.
        if (name.size() > known.size() + limit) {
            continue;
        }
        const std::size_t distance = DistanceOf(name, known);
        if (distance <= limit && distance < least) {
            least = distance;
            nearest = known;
        }
    }
    return nearest;
}

}  // namespace sealkeeper
