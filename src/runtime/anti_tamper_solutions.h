// The anti-tamper solutions that may be wrapped round a game binary: numbers in runtime.conf, names
// in the configuration file.
#ifndef SEALKEEPER_RUNTIME_ANTI_TAMPER_SOLUTIONS_H
#define SEALKEEPER_RUNTIME_ANTI_TAMPER_SOLUTIONS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace sealkeeper {

// No solution. Deliberately cannot be chosen by name: it also stands for a name that is not known.
inline constexpr std::uint32_t kNoAntiTamperSolution = 0;

// The name of `solution`; "N/A", with a message, when the number is not in the table.
[[nodiscard]] const char* AntiTamperSolutionName(std::uint32_t solution);

struct NamedSolution {
    std::uint32_t solution = kNoAntiTamperSolution;
    // Of its name in the text.
    std::size_t offset = 0;
};

// Every solution whose name occurs anywhere in `text`, ignoring case, in ascending number.
[[nodiscard]] std::vector<NamedSolution> FindAntiTamperSolutions(std::string_view text);

// The lowest number whose name occurs anywhere in `name`, ignoring case; 0, with a message that
// lists the table, when none does.
[[nodiscard]] std::uint32_t AntiTamperSolutionFromName(std::string_view name);

// All names, indexed by the solution's number.
[[nodiscard]] std::span<const char* const> AntiTamperSolutionNames();

// Logs every name of the table, in ascending number.
void ListAntiTamperSolutions();

}  // namespace sealkeeper

#endif
