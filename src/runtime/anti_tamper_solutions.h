// The anti-tamper solutions that may protect a game binary: numbers in runtime.conf, names in the
// configuration file.
#ifndef SEALKEEPER_RUNTIME_ANTI_TAMPER_SOLUTIONS_H
#define SEALKEEPER_RUNTIME_ANTI_TAMPER_SOLUTIONS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace sealkeeper {

// No solution. Deliberately cannot be chosen by name, because it also stands for an unknown name.
inline constexpr std::uint32_t kNoAntiTamperSolution = 0;

// The name of `solution`; "N/A", logged, when the number is not in the table.
[[nodiscard]] const char* AntiTamperSolutionName(std::uint32_t solution);

struct NamedSolution {
    std::uint32_t solution = kNoAntiTamperSolution;
    // Where its name begins in the text, in bytes.
    std::size_t offset = 0;
};

// Every solution whose name occurs anywhere in `text`, ignoring case, in ascending order of
// numbers.
[[nodiscard]] std::vector<NamedSolution> FindAntiTamperSolutions(std::string_view text);

// The lowest number whose name occurs anywhere in `name`, ignoring case. When none does, 0, and the
// table is logged.
[[nodiscard]] std::uint32_t AntiTamperSolutionFromName(std::string_view name);

// All names, indexed by the solution's number.
[[nodiscard]] std::span<const char* const> AntiTamperSolutionNames();

// Logs every name of the table, in ascending order of numbers.
void ListAntiTamperSolutions();

}  // namespace sealkeeper

#endif
