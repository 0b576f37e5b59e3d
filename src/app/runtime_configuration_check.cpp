#include "app/runtime_configuration_check.h"

#include "app/console_log.h"
#include "catalogue/catalogue_format.h"
#include "platform/file_io.h"
#include "runtime/certificate_trust.h"
#include "runtime/runtime_configuration_reader.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

using Verdict = RuntimeConfigurationVerdict;

// Reads the certificate at `path` into `certificate`. `Good`, or what failed, logged.
Verdict LoadCertificate(const std::string& path, Certificate& certificate) {
    const auto bytes = ReadCertificateBytes(path);
    if (!bytes) {
        Log(LogLevel::Error, "Failed to read certificate file %s.\n", path.c_str());
        return Verdict::CertificateNotRead;
    }
    if (ParseCertificate(*bytes, certificate) < 0) {
        Log(LogLevel::Error, "Error parsing certificate file '%s'.\n", path.c_str());
        return Verdict::CertificateNotParsed;
    }
    return Verdict::Good;
}

}  // namespace

ResultCode CodeOf(RuntimeConfigurationVerdict verdict) {
    switch (verdict) {
        case Verdict::NotRead:
        case Verdict::Good:
            return ResultCode::Ok;
        case Verdict::CertificateNotRead:
        case Verdict::CertificateNotParsed:
            return ResultCode::CertIOError;
        case Verdict::CertificateNotTrusted:
        case Verdict::NotValid:
            break;
    }
    return ResultCode::MbedTlsX509VerifyFailed;
}

RuntimeConfigurationVerdict CheckRuntimeConfiguration(const CommandLineOptions& options,
                                                      const std::string& directory) {
    const std::string path = directory + kRuntimeConfigurationFileName;
    auto file = ReadFileStart(path, kMaxRuntimeFileBytes);
    if (!file) {
        return Verdict::NotRead;
    }
    Log(LogLevel::Info, "Validating runtime configuration file at: %s\n", path.c_str());
    const std::string certificatePath = directory + kMainCatalogueName + kCertificateExtension;
    Certificate certificate;
    if (const Verdict verdict = LoadCertificate(certificatePath, certificate);
        verdict != Verdict::Good) {
        return verdict;
    }
    if (!options.gameDevMode &&
        !CheckCertificateTrust(BuiltInTrustMaterial(), certificate, options.productId)) {
        Log(LogLevel::Error, "Error verifying certificate file '%s'.\n", certificatePath.c_str());
        return Verdict::CertificateNotTrusted;
    }
    if (!ValidateRuntimeConfiguration(file->bytes, certificate)) {
        Log(LogLevel::Error, "Validation of runtime configuration failed: '%s'.\n", path.c_str());
        return Verdict::NotValid;
    }
    Log(LogLevel::Info, "Successfully validated runtime configuration: '%s'.\n", path.c_str());
    return Verdict::Good;
}

}  // namespace sealkeeper
