// The check of an installed game's runtime.conf.
#ifndef SEALKEEPER_APP_RUNTIME_CONFIGURATION_CHECK_H
#define SEALKEEPER_APP_RUNTIME_CONFIGURATION_CHECK_H

#include <string>

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// The result for a runtime.conf.
enum class RuntimeConfigurationVerdict {
    // There is none, or it cannot be read. Not a failure: a mod has none.
    NotRead,
    Good,
    // These three are about the certificate beside it.
    CertificateNotRead,
    CertificateNotParsed,
    CertificateNotTrusted,
    NotValid,
};

// `Ok` for `Good` and `NotRead`, `CertIOError` for a certificate that cannot be read or parsed,
// otherwise `MbedTlsX509VerifyFailed`.
ResultCode CodeOf(RuntimeConfigurationVerdict verdict);

// Checks runtime.conf in `directory`, which ends in '/', with the certificate base.cer beside it,
// and logs the outcome. Logs nothing when runtime.conf cannot be read. With `-gamedev`, the trust
// in the certificate is not checked.
RuntimeConfigurationVerdict CheckRuntimeConfiguration(const CommandLineOptions& options,
                                                      const std::string& directory);

}  // namespace sealkeeper

#endif
