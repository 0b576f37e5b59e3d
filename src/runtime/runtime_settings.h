// The section "runtime_configuration" of the configuration file.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_SETTINGS_H
#define SEALKEEPER_RUNTIME_RUNTIME_SETTINGS_H

#include "config/config_document.h"
#include "runtime/runtime_configuration.h"

namespace sealkeeper {

// Fills `configuration` from `document`; absent keys have defaults. Returns false, with a message,
// only when the anti-tamper solution is given by a name that cannot be used; the crash reporter
// name is not read then.
[[nodiscard]] bool LoadRuntimeSettings(RuntimeConfiguration& configuration,
                                       ConfigDocument& document);

}  // namespace sealkeeper

#endif
