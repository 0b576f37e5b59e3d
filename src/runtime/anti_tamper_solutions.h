// The anti-tamper solutions that may be wrapped round a game binary: numbers in runtime.conf, names
// in the configuration file.
#ifndef SEALKEEPER_RUNTIME_ANTI_TAMPER_SOLUTIONS_H
#define SEALKEEPER_RUNTIME_ANTI_TAMPER_SOLUTIONS_H

#include <cstdint>
#include <string_view>

namespace sealkeeper {

// No solution. Deliberately cannot be chosen by name: it also stands for a name that is not known.
inline constexpr std::uint32_t kNoAntiTamperSolution = 0;

// The name of `solution`; "N/A", with a message, when the number is not in the table.
[[nodiscard]] const char* AntiTamperSolutionName(std::uint32_t solution);

// The lowest number whose name occurs anywhere in `name`, ignoring case; 0, with a message that
// lists the table, when none does.
[[nodiscard]] std::uint32_t AntiTamperSolutionFromName(std::string_view name);

// Logs every name of the table, in ascending number.
void ListAntiTamperSolutions();

}  // namespace sealkeeper

#endif
