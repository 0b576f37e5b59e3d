#include "app/certificate_copy.h"

#include "app/console_log.h"
#include "platform/output_file.h"

namespace sealkeeper {

ResultCode CopyCertificate(std::span<const std::uint8_t> bytes, const std::string& path) {
    switch (WriteWholeFile(path, bytes)) {
        case WriteOutcome::Written:
            return ResultCode::Ok;
        case WriteOutcome::OpenFailed:
            Log(LogLevel::Error,
                "Error copying certificate to working directory - failed to open file.\n");
            break;
        case WriteOutcome::WriteFailed:
            Log(LogLevel::Error,
                "Error copying certificate to working directory - error writing to stream.\n");
            break;
        case WriteOutcome::CloseFailed:
            break;
    }
    return ResultCode::CertIOError;
}

}  // namespace sealkeeper
