// The copy of the signing certificate that lies beside a catalogue and verifies it.
#ifndef SEALKEEPER_APP_CERTIFICATE_COPY_H
#define SEALKEEPER_APP_CERTIFICATE_COPY_H

#include <cstdint>
#include <span>
#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// Writes the certificate file's `bytes` to `path`, as `WriteWholeFile` does. `CertIOError` when
// that fails, logged unless only the closing of the file failed.
ResultCode CopyCertificate(std::span<const std::uint8_t> bytes, const std::string& path);

}  // namespace sealkeeper

#endif
