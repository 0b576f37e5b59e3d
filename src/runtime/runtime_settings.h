// The section "runtime_configuration" of the configuration file.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_SETTINGS_H
#define SEALKEEPER_RUNTIME_RUNTIME_SETTINGS_H

#include "config/config_document.h"
#include "runtime/runtime_configuration.h"

namespace sealkeeper {

// Logged for an anti-tamper solution with an unknown name.
inline constexpr const char* kUnknownSolutionText =
    "Please provide name of a supported anti-tamper solution, if the one being used is not specifically listed, use 'Generic'.\n";

// Fills `configuration` from `document`. A key that is absent takes its default, except the crash
// reporter name, which is left as it is. Returns false, logged, only when the name of the
// anti-tamper solution is unknown; then the crash reporter name is not read.
[[nodiscard]] bool LoadRuntimeSettings(RuntimeConfiguration& configuration,
                                       ConfigDocument& document);

}  // namespace sealkeeper

#endif
