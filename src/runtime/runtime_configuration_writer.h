// Writes runtime.conf.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_WRITER_H
#define SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_WRITER_H

#include <mbedtls/pk.h>

#include <string>

#include "app/result_code.h"
#include "runtime/runtime_configuration.h"

namespace sealkeeper {

inline constexpr const char* kRuntimeConfigurationFileName = "runtime.conf";

// Signs `configuration`, shows it, and writes it, scrambled, to runtime.conf in `outputDirectory`
// with `WriteWholeFile`. `outputDirectory` ends in a separator. Fails, logged, with
// `MbedTlsGenericError` when it cannot be signed and `SealkeeperIOError` when it cannot be written.
ResultCode WriteRuntimeConfiguration(const RuntimeConfiguration& configuration,
                                     mbedtls_pk_context* privateKey,
                                     const std::string& outputDirectory);

}  // namespace sealkeeper

#endif
