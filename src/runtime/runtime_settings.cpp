#include "runtime/runtime_settings.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "app/console_log.h"
#include "config/config_names.h"
#include "runtime/anti_tamper_solutions.h"

namespace sealkeeper {
namespace {

constexpr std::uint32_t kDefaultMaxActiveInstances = 1;

// A name that is too long for its field is cut, and has no terminating zero then. A zero byte ends
// the name.
void StoreCrashReporterName(const std::string& name, RuntimeConfiguration& configuration) {
    auto& field = configuration.crashReporterName;
    const std::string shown(name.begin(), std::find(name.begin(), name.end(), '\0'));
    field.fill('\0');
    std::copy_n(shown.begin(), std::min(shown.size(), field.size()), field.begin());
}

}  // namespace

bool LoadRuntimeSettings(RuntimeConfiguration& configuration, ConfigDocument& document) {
    std::string sectionName = kRuntimeSection;
    ConfigSection& section = document.GetSection(sectionName);
    configuration.version = kRuntimeConfigurationVersion;
    // Keeps the low 32 bits, so that -1 becomes the largest number.
    configuration.maxActiveInstances =
        section.integers.Has(kMaxInstancesKey)
            ? static_cast<std::uint32_t>(section.integers.Get(kMaxInstancesKey))
            : kDefaultMaxActiveInstances;
    configuration.antiTamperSolution = kNoAntiTamperSolution;
    if (section.strings.Has(kAntiTamperKey)) {
        configuration.antiTamperSolution =
            AntiTamperSolutionFromName(section.strings.Get(kAntiTamperKey));
        if (configuration.antiTamperSolution == kNoAntiTamperSolution) {
            Log(LogLevel::Info, kUnknownSolutionText);
            return false;
        }
    }
    if (section.strings.Has(kCrashReporterKey)) {
        StoreCrashReporterName(section.strings.Get(kCrashReporterKey), configuration);
    }
    return true;
}

}  // namespace sealkeeper
