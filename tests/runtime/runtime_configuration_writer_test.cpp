#include "runtime/runtime_configuration_writer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::FileBytes;
using test::Hex;
using test::IsAllZero;
using test::LoadKey;
using test::MakeUnusableKey;
using test::TempDirectory;
using test::VerifySignature;

using Bytes = std::vector<std::uint8_t>;

const std::string kShownConfiguration =
    "[Info] The following configuration will be used by clients with the file present:\n"
    "[Info] Anti-cheat client configuration:\n"
    "[Info]     Version: 1\n"
    "[Info]     Maximum amount of active client instances: 258\n"
    "[Info]     Crash reporter name: CrashReporter\n"
    "[Info]     Game binary anti tamper solution: Generic\n";

RuntimeConfiguration ExampleConfiguration() {
    RuntimeConfiguration configuration;
    configuration.version = 1;
    configuration.maxActiveInstances = 258;
    const std::string name = "CrashReporter";
    std::copy(name.begin(), name.end(), configuration.crashReporterName.begin());
    configuration.antiTamperSolution = 1;
    return configuration;
}

std::string Created(const std::string& path) {
    return "[Info] Anti-cheat client-side configuration file was successfully created: '" + path +
           "'.\n";
}

// Unscrambles by the definition of the format, independently of the code under test.
Bytes PlainBytes(const Bytes& scrambled) {
    Bytes plain = scrambled;
    for (std::size_t i = scrambled.size(); i-- > 0;) {
        const unsigned successor = i + 1 < scrambled.size() ? plain[i + 1] : 0U;
        plain[i] = static_cast<std::uint8_t>(scrambled[i] - successor - 3 * i);
    }
    return plain;
}

struct KeyCase {
    const char* kind;
    std::size_t signatureBytes;
    const char* lengthHex;
};

TEST(RuntimeConfigurationWriter, WritesTheSignedAndScrambledFile) {
    for (const KeyCase& used :
         std::vector<KeyCase>{{"good", 256, "00010000"}, {"big-key", 512, "00020000"}}) {
        const TempDirectory directory;
        PrivateKey key;
        LoadKey(used.kind, key);
        const std::string path = directory.WriteFile("runtime.conf", std::string(3000, 'x'));
        CapturedOutput output;
        EXPECT_EQ(WriteRuntimeConfiguration(ExampleConfiguration(), key.Get(), directory / ""),
                  ResultCode::Ok);
        EXPECT_EQ(output.Take(), kShownConfiguration + Created(path));

        const Bytes plain = PlainBytes(FileBytes(path));
        ASSERT_EQ(plain.size(), 1108U);
        const std::span<const std::uint8_t> bytes(plain);
        EXPECT_EQ(Hex(bytes.first(4)), "51565200");
        EXPECT_EQ(Hex(bytes.subspan(1028, 4)), used.lengthHex);
        EXPECT_EQ(Hex(bytes.subspan(1032, 8)), "0100000002010000");
        EXPECT_EQ(std::string(plain.begin() + 1040, plain.begin() + 1053), "CrashReporter");
        EXPECT_TRUE(IsAllZero(bytes.subspan(1053, 51)));
        EXPECT_EQ(Hex(bytes.subspan(1104)), "01000000");
        EXPECT_TRUE(IsAllZero(bytes.subspan(4 + used.signatureBytes, 1024 - used.signatureBytes)));

        Bytes signedImage = plain;
        std::fill(signedImage.begin() + 4, signedImage.begin() + 1032, std::uint8_t{0});
        EXPECT_EQ(VerifySignature(used.kind, signedImage, bytes.subspan(4, used.signatureBytes)),
                  0);
    }
}

TEST(RuntimeConfigurationWriter, NameOf64BytesFillsItsField) {
    const TempDirectory directory;
    PrivateKey key;
    LoadKey("good", key);
    RuntimeConfiguration configuration = ExampleConfiguration();
    configuration.crashReporterName.fill('n');
    EXPECT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), directory / ""), ResultCode::Ok);
    const Bytes plain = PlainBytes(FileBytes(directory / "runtime.conf"));
    ASSERT_EQ(plain.size(), 1108U);
    EXPECT_EQ(std::string(plain.begin() + 1040, plain.begin() + 1105), std::string(64, 'n') + "\1");
}

TEST(RuntimeConfigurationWriter, OtherVersionIsReportedAndWrittenAllTheSame) {
    const TempDirectory directory;
    PrivateKey key;
    LoadKey("good", key);
    RuntimeConfiguration configuration = ExampleConfiguration();
    configuration.version = 2;
    CapturedOutput output;
    EXPECT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), directory / ""), ResultCode::Ok);
    EXPECT_EQ(output.Take(),
              "[Info] The following configuration will be used by clients with the file present:\n"
              "[Info] Anti-cheat client configuration:\n"
              "[Info]     Version: 2\n"
              "[Err!] Called with an unsupported version!\n" +
                  Created(directory / "runtime.conf"));
}

TEST(RuntimeConfigurationWriter, SigningFailureIsShownAsInformationAndWritesNothing) {
    const TempDirectory directory;
    PrivateKey key;
    MakeUnusableKey(key);
    CapturedOutput output;
    EXPECT_EQ(WriteRuntimeConfiguration(ExampleConfiguration(), key.Get(), directory / ""),
              ResultCode::MbedTlsGenericError);
    EXPECT_EQ(output.Take(),
              "[Info] Failed to generate RSA signature for the configuration data.\n");
    EXPECT_FALSE(std::filesystem::exists(directory / "runtime.conf"));
}

TEST(RuntimeConfigurationWriter, MissingKeyIsReported) {
    const TempDirectory directory;
    CapturedOutput output;
    EXPECT_EQ(WriteRuntimeConfiguration(ExampleConfiguration(), nullptr, directory / ""),
              ResultCode::MbedTlsGenericError);
    EXPECT_EQ(output.Take(),
              "[Err!] Called with invalid parameters.\n"
              "[Info] Failed to generate RSA signature for the configuration data.\n");
}

TEST(RuntimeConfigurationWriter, FileThatCannotBeCreated) {
    const TempDirectory directory;
    PrivateKey key;
    LoadKey("good", key);
    std::filesystem::create_directory(directory / "runtime.conf");
    for (const std::string& outputDirectory : {directory / "", directory / "missing/"}) {
        CapturedOutput output;
        EXPECT_EQ(WriteRuntimeConfiguration(ExampleConfiguration(), key.Get(), outputDirectory),
                  ResultCode::SealkeeperIOError);
        EXPECT_EQ(output.Take(),
                  kShownConfiguration + "[Err!] Could not create file: '" + outputDirectory +
                      "runtime.conf'. Try running the tool with admin privileges.\n");
    }
}

TEST(RuntimeConfigurationWriter, FullDiskIsAWriteError) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "only Linux has /dev/full";
    }
    const TempDirectory directory;
    PrivateKey key;
    LoadKey("good", key);
    const std::string path = directory / "runtime.conf";
    ASSERT_EQ(symlink("/dev/full", path.c_str()), 0);
    CapturedOutput output;
    EXPECT_EQ(WriteRuntimeConfiguration(ExampleConfiguration(), key.Get(), directory / ""),
              ResultCode::SealkeeperIOError);
    EXPECT_EQ(output.Take(),
              kShownConfiguration + "[Err!] Error writing to file stream: '" + path + "'\n");
}

}  // namespace
}  // namespace sealkeeper
