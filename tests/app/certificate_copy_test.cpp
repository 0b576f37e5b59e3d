#include "app/certificate_copy.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ReadFile;
using test::TempDirectory;

constexpr std::array<std::uint8_t, 4> kBytes = {0x30, 0x00, 0xFF, 0x0A};

struct Copied {
    ResultCode code = ResultCode::Aborted;
    std::string output;
};

Copied CopyTo(const std::string& path) {
    CapturedOutput output;
    const ResultCode code = CopyCertificate(kBytes, path);
    return {code, output.Take()};
}

TEST(CertificateCopy, HasEveryByteAndNoOther) {
    const TempDirectory directory;
    for (const std::string& path : {directory / "new", directory.WriteFile("old", "longer")}) {
        const Copied copied = CopyTo(path);
        EXPECT_EQ(copied.code, ResultCode::Ok);
        EXPECT_EQ(copied.output, "");
        EXPECT_EQ(ReadFile(path), std::string(kBytes.begin(), kBytes.end()));
    }
}

TEST(CertificateCopy, PathThatCannotBeOpened) {
    const TempDirectory directory;
    for (const std::string& path : {directory / "missing/base.cer", directory.Path()}) {
        const Copied copied = CopyTo(path);
        EXPECT_EQ(copied.code, ResultCode::CertIOError);
        EXPECT_EQ(copied.output,
                  "[Err!] Error copying certificate to working directory - failed to open file.\n");
    }
}

TEST(CertificateCopy, DeviceThatIsFull) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "the system has no /dev/full";
    }
    const Copied copied = CopyTo("/dev/full");
    EXPECT_EQ(copied.code, ResultCode::CertIOError);
    EXPECT_EQ(copied.output,
              "[Err!] Error copying certificate to working directory - error writing to stream.\n");
}

}  // namespace
}  // namespace sealkeeper
