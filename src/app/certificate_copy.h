// The copy of the signing certificate that is kept beside a catalogue, to verify it with.
#ifndef SEALKEEPER_APP_CERTIFICATE_COPY_H
#define SEALKEEPER_APP_CERTIFICATE_COPY_H

#include <cstdint>
#include <span>
#include <string>

#include "app/result_code.h"

namespace sealkeeper {

// Writes the certificate file's `bytes` to `path`, as `WriteWholeFile` does. Fails with
// `CertIOError`, logged unless only closing the file failed.
ResultCode CopyCertificate(std::span<const std::uint8_t> bytes, const std::string& path);

}  // namespace sealkeeper

#endif
