#include "runtime/anti_tamper_solutions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "app/console_log.h"

namespace sealkeeper {
namespace {

// Indexed by the solution's number.
constexpr std::array<const char*, 9> kSolutionNames = {
    "None",      "Generic",   "Arxan",     "Denuvo",  "Themida",
    "StarForce", "VMProtect", "Steam DRM", "AppSign",
};

// Bytes that differ in at most this bit are equal, whether they are letters or not.
constexpr unsigned kCaseBit = 0x20;

bool EqualIgnoringCaseBit(char left, char right) {
    const auto difference = static_cast<unsigned char>(left) ^ static_cast<unsigned char>(right);
    return (static_cast<unsigned>(difference) & ~kCaseBit) == 0;
}

}  // namespace

const char* AntiTamperSolutionName(std::uint32_t solution) {
    if (solution >= kSolutionNames.size()) {
        Log(LogLevel::Error, "Called with invalid value: %u.\n", solution);
        return "N/A";
    }
    return kSolutionNames[solution];
}

std::vector<NamedSolution> FindAntiTamperSolutions(std::string_view text) {
    std::vector<NamedSolution> found;
    for (std::uint32_t solution = 0; solution < kSolutionNames.size(); ++solution) {
        const std::string_view name = kSolutionNames[solution];
        const auto* const place =
            std::search(text.begin(), text.end(), name.begin(), name.end(), EqualIgnoringCaseBit);
        if (place != text.end()) {
            found.push_back({solution, static_cast<std::size_t>(place - text.begin())});
        }
    }
    return found;
}

std::uint32_t AntiTamperSolutionFromName(std::string_view name) {
    if (const auto found = FindAntiTamperSolutions(name); !found.empty()) {
        return found.front().solution;
    }
    Log(LogLevel::Error,
        "Called with an unsupported anti-tamper solution name: '%s'. The following are supported:\n",
        std::string(name).c_str());
    ListAntiTamperSolutions();
    return kNoAntiTamperSolution;
}

std::span<const char* const> AntiTamperSolutionNames() {
    return kSolutionNames;
}

void ListAntiTamperSolutions() {
    for (const char* name : kSolutionNames) {
        Log(LogLevel::Info, "Solution name: '%s'.\n", name);
    }
}

}  // namespace sealkeeper
