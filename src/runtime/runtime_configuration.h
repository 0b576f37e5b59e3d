// The settings that the anti-cheat client applies to a game at run time, and how they are shown.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_H
#define SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "app/result_code.h"

namespace sealkeeper {

inline constexpr std::uint32_t kRuntimeConfigurationVersion = 1;
inline constexpr std::size_t kCrashReporterNameBytes = 64;

struct RuntimeConfiguration {
    std::uint32_t version = 0;
    std::uint32_t maxActiveInstances = 0;
    // Padded with zero bytes; a name that fills the field has no terminating zero.
    std::array<char, kCrashReporterNameBytes> crashReporterName{};
    // A number from the table in anti_tamper_solutions.cpp.
    std::uint32_t antiTamperSolution = 0;
};

// Logs `configuration` line by line. Fails with `CatalogueFileVersionUnsupported`, logged, when its
// version is not `kRuntimeConfigurationVersion`; then nothing after the version is shown.
ResultCode PrintRuntimeConfiguration(const RuntimeConfiguration& configuration);

}  // namespace sealkeeper

#endif
