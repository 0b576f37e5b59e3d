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

ResultCode LoadCertificate(const std::string& path, Certificate& certificate) {
    const auto bytes = ReadCertificateBytes(path);
    if (!bytes) {
        Log(LogLevel::Error, "Failed to read certificate file %s.\n", path.c_str());
        return ResultCode::CertIOError;
    }
    if (ParseCertificate(*bytes, certificate) < 0) {
        Log(LogLevel::Error, "Error parsing certificate file '%s'.\n", path.c_str());
        return ResultCode::CertIOError;
    }
    return ResultCode::Ok;
}

}  // namespace

ResultCode CheckRuntimeConfiguration(const CommandLineOptions& options,
                                     const std::string& directory) {
    const std::string path = directory + kRuntimeConfigurationFileName;
    auto file = ReadFileStart(path, kMaxRuntimeFileBytes);
    if (!file) {
        return ResultCode::Ok;
    }
    Log(LogLevel::Info, "Validating runtime configuration file at: %s\n", path.c_str());
    const std::string certificatePath = directory + kMainCatalogueName + kCertificateExtension;
    Certificate certificate;
    if (const ResultCode code = LoadCertificate(certificatePath, certificate);
        code != ResultCode::Ok) {
        return code;
    }
    if (!options.gameDevMode &&
        !CheckCertificateTrust(BuiltInTrustMaterial(), certificate, options.productId)) {
        Log(LogLevel::Error, "Error verifying certificate file '%s'.\n", certificatePath.c_str());
        return ResultCode::MbedTlsX509VerifyFailed;
    }
    if (!ValidateRuntimeConfiguration(file->bytes, certificate)) {
        Log(LogLevel::Error, "Validation of runtime configuration failed: '%s'.\n", path.c_str());
        return ResultCode::MbedTlsX509VerifyFailed;
    }
    Log(LogLevel::Info, "Successfully validated runtime configuration: '%s'.\n", path.c_str());
    return ResultCode::Ok;
}

}  // namespace sealkeeper
