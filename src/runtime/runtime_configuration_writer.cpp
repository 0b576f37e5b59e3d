#include "runtime/runtime_configuration_writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "app/console_log.h"
#include "platform/little_endian.h"
#include "platform/output_file.h"
#include "runtime/runtime_configuration_format.h"
#include "runtime/scramble.h"
#include "runtime/sign_buffer.h"

namespace sealkeeper {
namespace {

using FileImage = std::array<std::uint8_t, runtime_file::kSizeBytes>;

FileImage UnsignedImage(const RuntimeConfiguration& configuration) {
    FileImage image{};
    const std::span<std::uint8_t> bytes(image);
    std::copy(signed_file::kMagic.begin(), signed_file::kMagic.end(),
              image.begin() + runtime_file::kMagicOffset);
    StoreLittleEndian(configuration.version, bytes.subspan(runtime_file::kVersionOffset));
    StoreLittleEndian(configuration.maxActiveInstances,
                      bytes.subspan(runtime_file::kMaxActiveInstancesOffset));
    std::copy(configuration.crashReporterName.begin(), configuration.crashReporterName.end(),
              image.begin() + runtime_file::kCrashReporterNameOffset);
    StoreLittleEndian(configuration.antiTamperSolution,
                      bytes.subspan(runtime_file::kAntiTamperSolutionOffset));
    return image;
}

// The signature covers the image with its signature area and length still zero.
bool SignImage(mbedtls_pk_context* privateKey, FileImage& image) {
    std::uint64_t signatureLength = 0;
    if (!SignBuffer(privateKey, image.data(), image.size(),
                    image.data() + runtime_file::kSignatureOffset, &signatureLength)) {
        return false;
    }
    StoreLittleEndian(static_cast<std::uint32_t>(signatureLength),
                      std::span(image).subspan(runtime_file::kSignatureLengthOffset));
    return true;
}

ResultCode WriteImage(const FileImage& image, const std::string& path) {
    switch (WriteWholeFile(path, image)) {
        case WriteOutcome::Written:
            Log(LogLevel::Info,
                "Anti-cheat client-side configuration file was successfully created: '%s'.\n",
                path.c_str());
            return ResultCode::Ok;
        case WriteOutcome::OpenFailed:
            Log(LogLevel::Error,
                "Could not create file: '%s'. Try running the tool with admin privileges.\n",
                path.c_str());
            break;
        case WriteOutcome::WriteFailed:
        case WriteOutcome::CloseFailed:
            Log(LogLevel::Error, "Error writing to file stream: '%s'\n", path.c_str());
            break;
    }
    return ResultCode::SealkeeperIOError;
}

}  // namespace

ResultCode WriteRuntimeConfiguration(const RuntimeConfiguration& configuration,
                                     mbedtls_pk_context* privateKey,
                                     const std::string& outputDirectory) {
    FileImage image = UnsignedImage(configuration);
    if (!SignImage(privateKey, image)) {
        // Deliberately shown as information.
        Log(LogLevel::Info, "Failed to generate RSA signature for the configuration data.\n");
        return ResultCode::MbedTlsGenericError;
    }
    Log(LogLevel::Info,
        "The following configuration will be used by clients with the file present:\n");
    static_cast<void>(PrintRuntimeConfiguration(configuration));
    Scramble(image);
    return WriteImage(image, outputDirectory + kRuntimeConfigurationFileName);
}

}  // namespace sealkeeper
