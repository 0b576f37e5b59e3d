// The section "runtime_configuration" of the configuration file.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_SETTINGS_H
#define SEALKEEPER_RUNTIME_RUNTIME_SETTINGS_H

#include "config/config_document.h"
#include "runtime/runtime_configuration.h"

namespace sealkeeper {

// Fills `configuration` from `document`. A key that is absent takes its default, except the crash
// reporter name, which is left as it is. Returns false, logged, only when the name of the
// anti-tamper solution is unknown; then the crash reporter name is not read.
[[nodiscard]] bool LoadRuntimeSettings(RuntimeConfiguration& configuration,
                                       ConfigDocument& document);

}  // namespace sealkeeper

#endif
