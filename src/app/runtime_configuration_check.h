// The check of an installed game's runtime.conf.
#ifndef SEALKEEPER_APP_RUNTIME_CONFIGURATION_CHECK_H
#define SEALKEEPER_APP_RUNTIME_CONFIGURATION_CHECK_H

#include <string>

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// Checks runtime.conf in `directory`, which ends in '/', with the certificate base.cer beside it,
// and logs the outcome. Returns `Ok` also when there is no runtime.conf that can be read, without a
// message: a mod has none. Fails with `CertIOError` when the certificate cannot be read or parsed,
// and with `MbedTlsX509VerifyFailed` when it is not trusted, which `-gamedev` leaves unchecked, or
// the signature is not its key's.
ResultCode CheckRuntimeConfiguration(const CommandLineOptions& options,
                                     const std::string& directory);

}  // namespace sealkeeper

#endif
