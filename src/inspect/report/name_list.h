// Lists names in a sentence.
#ifndef SEALKEEPER_INSPECT_REPORT_NAME_LIST_H
#define SEALKEEPER_INSPECT_REPORT_NAME_LIST_H

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace sealkeeper {

inline constexpr std::size_t kEveryName = std::numeric_limits<std::size_t>::max();

// "a", "a and b", "a, b and c". Beyond `most` names, the rest is counted: "a, b and 3 more". Empty
// for no names.
[[nodiscard]] std::string NameList(const std::vector<std::string>& names,
                                   std::size_t most = kEveryName);

// As above, with each name in single quotes.
[[nodiscard]] std::string QuotedNameList(const std::vector<std::string>& names,
                                         std::size_t most = kEveryName);

}  // namespace sealkeeper

#endif
