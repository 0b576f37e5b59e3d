// Reads runtime.conf: shows its settings, or checks its signature.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_READER_H
#define SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_READER_H

#include <cstdint>
#include <span>

#include "app/result_code.h"
#include "runtime/invalid_reason.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/runtime_configuration.h"

namespace sealkeeper {

// At most this much is read of a file that should be a runtime.conf. Longer files are invalid.
// Truncation still fails both checks: unless made for it, the file does not unscramble to the
// magic, and the signature does not fit.
inline constexpr std::uint64_t kMaxRuntimeFileBytes = 67'108'864;

// Unscrambles the whole file `fileBytes` in place, reads its settings into `configuration` and
// shows them; the signature is not checked. Fails, logged, with `FileInvalid` when it is not a
// runtime.conf, and with `CatalogueFileVersionUnsupported` when its version is unknown. The reason
// is then stored in `*reason`, unless `reason` is null.
ResultCode ListRuntimeConfiguration(std::span<std::uint8_t> fileBytes,
                                    RuntimeConfiguration& configuration,
                                    InvalidReason* reason = nullptr);

// Unscrambles the whole file `fileBytes` in place and returns whether its signature verifies with
// the certificate's key. False also for a file too short to hold a signature. Logs nothing.
[[nodiscard]] bool ValidateRuntimeConfiguration(std::span<std::uint8_t> fileBytes,
                                                Certificate& certificate);

}  // namespace sealkeeper

#endif
