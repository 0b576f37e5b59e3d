#include "runtime/runtime_configuration_reader.h"

#include <algorithm>

#include "app/console_log.h"
#include "platform/little_endian.h"
#include "runtime/runtime_configuration_format.h"
#include "runtime/scramble.h"
#include "runtime/stored_signature.h"

namespace sealkeeper {
namespace {

RuntimeConfiguration LoadRecord(std::span<const std::uint8_t> file) {
    const auto load = [file](std::size_t offset) {
        return LoadLittleEndian<std::uint32_t>(file.subspan(offset));
    };
    RuntimeConfiguration configuration;
    configuration.version = load(runtime_file::kVersionOffset);
    configuration.maxActiveInstances = load(runtime_file::kMaxActiveInstancesOffset);
    const auto name = file.subspan(runtime_file::kCrashReporterNameOffset, kCrashReporterNameBytes);
    std::copy(name.begin(), name.end(), configuration.crashReporterName.begin());
    configuration.antiTamperSolution = load(runtime_file::kAntiTamperSolutionOffset);
    return configuration;
}

}  // namespace

ResultCode ListRuntimeConfiguration(std::span<std::uint8_t> fileBytes,
                                    RuntimeConfiguration& configuration, InvalidReason* reason) {
    Unscramble(fileBytes);
    if (fileBytes.size() < runtime_file::kSizeBytes) {
        Log(LogLevel::Error,
            "The provided file was too small to be a configuration file, file size: %zu, expected: %zu.\n",
            fileBytes.size(), runtime_file::kSizeBytes);
        return FailInvalid({InvalidField::FileLength, InvalidPlace::File, fileBytes.size(),
                            fileBytes.size(), runtime_file::kSizeBytes},
                           reason);
    }
    if (!signed_file::HasMagic(fileBytes)) {
        Log(LogLevel::Error, "Unsupported file format.\n");
        return FailInvalid({InvalidField::Magic, InvalidPlace::File, runtime_file::kMagicOffset,
                            LoadLittleEndian<std::uint32_t>(fileBytes), signed_file::kMagicNumber},
                           reason);
    }
    configuration = LoadRecord(fileBytes);
    const ResultCode code = PrintRuntimeConfiguration(configuration);
    if (code != ResultCode::Ok) {
        TellReason({InvalidField::SettingsVersion, InvalidPlace::File, runtime_file::kVersionOffset,
                    configuration.version, kRuntimeConfigurationVersion},
                   reason);
    }
    return code;
}

bool ValidateRuntimeConfiguration(std::span<std::uint8_t> fileBytes, Certificate& certificate) {
    Unscramble(fileBytes);
    // A file that is too long fails the check below, because the signature covers the whole file.
    if (fileBytes.size() < runtime_file::kVersionOffset) {
        return false;
    }
    const StoredSignature signature = TakeSignature(fileBytes, runtime_file::kSignatureOffset);
    return VerifySignature(&certificate.Get()->pk, fileBytes, signature) == 0;
}

}  // namespace sealkeeper
