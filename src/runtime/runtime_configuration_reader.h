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

// How much is read of a file that should be a runtime.conf. One that is longer is none: cut here,
// it neither unscrambles to the magic nor has a signature that fits.
inline constexpr std::uint64_t kMaxRuntimeFileBytes = 67'108'864;

// Unscrambles the whole file `fileBytes` in place, reads its settings into `configuration` and
// shows them; the signature is not checked. Fails, logged, with `FileInvalid` when it is no
// runtime.conf and with `CatalogueFileVersionUnsupported` when its version is not the one known
// here; what is wrong is then in `*reason`, unless that is null.
ResultCode ListRuntimeConfiguration(std::span<std::uint8_t> fileBytes,
                                    RuntimeConfiguration& configuration,
                                    InvalidReason* reason = nullptr);

// Unscrambles the whole file `fileBytes` in place and returns whether the signature in it is that
// of the certificate's key. A file that is too short to hold one has none. Logs nothing.
[[nodiscard]] bool ValidateRuntimeConfiguration(std::span<std::uint8_t> fileBytes,
                                                Certificate& certificate);

}  // namespace sealkeeper

#endif
