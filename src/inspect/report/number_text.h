// Formats numbers for people.
#ifndef SEALKEEPER_INSPECT_REPORT_NUMBER_TEXT_H
#define SEALKEEPER_INSPECT_REPORT_NUMBER_TEXT_H

#include <cstdint>
#include <string>
#include <string_view>

namespace sealkeeper {

// "1,234,567".
[[nodiscard]] std::string GroupedNumber(std::uint64_t number);

// "999 bytes", "1.0 kB", "123.4 MB". Units are decimal, as in the configuration file.
[[nodiscard]] std::string SizeText(std::uint64_t bytes);

// "1 file", "2 files".
[[nodiscard]] std::string CountText(std::uint64_t count, std::string_view singular);

}  // namespace sealkeeper

#endif
