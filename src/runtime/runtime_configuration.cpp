#include "runtime/runtime_configuration.h"

#include <algorithm>
#include <string>

#include "app/console_log.h"
#include "runtime/anti_tamper_solutions.h"

namespace sealkeeper {
namespace {

std::string ShownCrashReporterName(const RuntimeConfiguration& configuration) {
    const auto& field = configuration.crashReporterName;
    const std::string name(field.begin(), std::find(field.begin(), field.end(), '\0'));
    return name.empty() ? "N/A" : name;
}

}  // namespace

ResultCode PrintRuntimeConfiguration(const RuntimeConfiguration& configuration) {
    Log(LogLevel::Info, "Anti-cheat client configuration:\n");
    Log(LogLevel::Info, "    Version: %lu\n", static_cast<unsigned long>(configuration.version));
    if (configuration.version != kRuntimeConfigurationVersion) {
        Log(LogLevel::Error, "Called with an unsupported version!\n");
        return ResultCode::CatalogueFileVersionUnsupported;
    }
    Log(LogLevel::Info, "    Maximum amount of active client instances: %lu\n",
        static_cast<unsigned long>(configuration.maxActiveInstances));
    Log(LogLevel::Info, "    Crash reporter name: %s\n",
        ShownCrashReporterName(configuration).c_str());
    // Looked up first, so that a message about an unknown number comes before the line.
    const char* solution = AntiTamperSolutionName(configuration.antiTamperSolution);
    Log(LogLevel::Info, "    Game binary anti tamper solution: %s\n", solution);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
