// The check of an installed game's runtime.conf.
#ifndef SEALKEEPER_APP_RUNTIME_CONFIGURATION_CHECK_H
#define SEALKEEPER_APP_RUNTIME_CONFIGURATION_CHECK_H

#include <string>

#include "app/command_line_options.h"
#include "app/result_code.h"

namespace sealkeeper {

// What was found of a runtime.conf.
enum class RuntimeConfigurationVerdict {
    // There is none that can be read. That is no failure: a mod has none.
    NotRead,
    Good,
    // Of the certificate beside it.
    CertificateNotRead,
    CertificateNotParsed,
    CertificateNotTrusted,
    NotValid,
};

// `Ok` for what is no failure, `CertIOError` for a certificate that cannot be read or parsed,
// otherwise `MbedTlsX509VerifyFailed`.
ResultCode CodeOf(RuntimeConfigurationVerdict verdict);

// Checks runtime.conf in `directory`, which ends in '/', with the certificate base.cer beside it,
// and logs the outcome, unless there is no runtime.conf that can be read. `-gamedev` leaves
// unchecked whether the certificate is trusted.
RuntimeConfigurationVerdict CheckRuntimeConfiguration(const CommandLineOptions& options,
                                                      const std::string& directory);

}  // namespace sealkeeper

#endif
