#include "runtime/runtime_configuration_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/little_endian.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/sign_buffer.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::CertificateBytes;
using test::LoadKey;
using test::TempDirectory;

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kFileBytes = 1108;
constexpr std::size_t kSignatureBytes = 256;

// Scrambles by the definition of the format, independently of the code under test.
Bytes ScrambledFile(const Bytes& plain) {
    Bytes scrambled = plain;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        const unsigned successor = i + 1 < plain.size() ? plain[i + 1] : 0U;
        scrambled[i] = static_cast<std::uint8_t>(plain[i] + successor + 3 * i);
    }
    return scrambled;
}

// The unsigned plain bytes of version 1 with 258 instances and the given name and solution.
Bytes PlainFile(const std::string& name = "CrashReporter", std::uint32_t solution = 1) {
    Bytes plain(kFileBytes);
    const Bytes magic = {0x51, 0x56, 0x52, 0x00};
    std::copy(magic.begin(), magic.end(), plain.begin());
    plain[1032] = 1;
    plain[1036] = 2;
    plain[1037] = 1;
    std::copy(name.begin(), name.end(), plain.begin() + 1040);
    StoreLittleEndian(solution, std::span(plain).subspan(1104));
    return plain;
}

// Signs all of `plain`, of any size, with the key in good/.
Bytes Signed(Bytes plain) {
    PrivateKey key;
    LoadKey("good", key);
    std::uint64_t length = 0;
    EXPECT_TRUE(SignBuffer(key.Get(), plain.data(), plain.size(), plain.data() + 4, &length));
    StoreLittleEndian(static_cast<std::uint32_t>(length), std::span(plain).subspan(1028));
    return plain;
}

struct Listed {
    ResultCode code = ResultCode::Ok;
    std::string output;
    RuntimeConfiguration configuration;
};

Listed List(Bytes stored) {
    Listed listed;
    listed.configuration.maxActiveInstances = 77;
    CapturedOutput output;
    listed.code = ListRuntimeConfiguration(stored, listed.configuration);
    listed.output = output.Take();
    return listed;
}

std::string Shown(const std::string& name, const std::string& solution) {
    return "[Info] Anti-cheat client configuration:\n"
           "[Info]     Version: 1\n"
           "[Info]     Maximum amount of active client instances: 258\n"
           "[Info]     Crash reporter name: " +
           name + "\n" + "[Info]     Game binary anti tamper solution: " + solution + "\n";
}

std::string TooSmall(std::size_t sizeBytes) {
    return "[Err!] The provided file was too small to be a configuration file, file size: " +
           std::to_string(sizeBytes) + ", expected: 1108.\n";
}

TEST(RuntimeConfigurationReader, ListsEveryField) {
    const Listed listed = List(ScrambledFile(PlainFile()));
    EXPECT_EQ(listed.code, ResultCode::Ok);
    EXPECT_EQ(listed.output, Shown("CrashReporter", "Generic"));
    EXPECT_EQ(listed.configuration.version, 1U);
    EXPECT_EQ(listed.configuration.maxActiveInstances, 258U);
    EXPECT_STREQ(listed.configuration.crashReporterName.data(), "CrashReporter");
    EXPECT_EQ(listed.configuration.antiTamperSolution, 1U);
}

TEST(RuntimeConfigurationReader, TellsWhatIsWrong) {
    Bytes magic = PlainFile();
    magic[2] = 0x53;
    Bytes version = PlainFile();
    version[1033] = 2;
    struct Case {
        Bytes stored;
        InvalidReason reason;
    };
    const std::vector<Case> cases = {
        {Bytes(1107), {InvalidField::FileLength, InvalidPlace::File, 1107, 1107, 1108}},
        {ScrambledFile(magic),
         {InvalidField::Magic, InvalidPlace::File, 0, 0x00535651, 0x00525651}},
        {ScrambledFile(version),
         {InvalidField::SettingsVersion, InvalidPlace::File, 1032, 0x201, 1}},
    };
    for (Case wrong : cases) {
        RuntimeConfiguration configuration;
        InvalidReason reason;
        CapturedOutput output;
        EXPECT_NE(ListRuntimeConfiguration(wrong.stored, configuration, &reason), ResultCode::Ok);
        static_cast<void>(output.Take());
        EXPECT_EQ(reason.field, wrong.reason.field);
        EXPECT_EQ(reason.place, InvalidPlace::File);
        EXPECT_EQ(reason.offset, wrong.reason.offset);
        EXPECT_EQ(reason.found, wrong.reason.found);
        EXPECT_EQ(reason.expected, wrong.reason.expected);
    }
}

TEST(RuntimeConfigurationReader, NamesAndSolutions) {
    EXPECT_EQ(List(ScrambledFile(PlainFile("", 0))).output, Shown("N/A", "None"));
    const std::string longest(64, 'n');
    EXPECT_EQ(List(ScrambledFile(PlainFile(longest, 7))).output, Shown(longest, "Steam DRM"));
    const Listed unknown = List(ScrambledFile(PlainFile("x", 0x01020309)));
    EXPECT_EQ(unknown.code, ResultCode::Ok);
    EXPECT_NE(unknown.output.find("[Err!] Called with invalid value: 16909065.\n"
                                  "[Info]     Game binary anti tamper solution: N/A\n"),
              std::string::npos)
        << unknown.output;
}

TEST(RuntimeConfigurationReader, ListsBackWhatTheWriterWrites) {
    const TempDirectory directory;
    PrivateKey key;
    LoadKey("good", key);
    RuntimeConfiguration configuration;
    configuration.version = 1;
    configuration.maxActiveInstances = 258;
    configuration.crashReporterName.fill('z');
    {
        CapturedOutput output;
        ASSERT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), directory / ""),
                  ResultCode::Ok);
    }
    Bytes stored = test::FileBytes(directory / "runtime.conf");
    EXPECT_EQ(List(stored).output, Shown(std::string(64, 'z'), "None"));
    Certificate certificate;
    ASSERT_EQ(ParseCertificate(CertificateBytes("good"), certificate), 0);
    EXPECT_TRUE(ValidateRuntimeConfiguration(stored, certificate));
}

TEST(RuntimeConfigurationReader, OtherVersions) {
    for (const std::uint32_t version : {0U, 2U, 257U, 0xFFFFFFFFU}) {
        Bytes plain = PlainFile();
        StoreLittleEndian(version, std::span(plain).subspan(1032));
        const Listed listed = List(ScrambledFile(plain));
        EXPECT_EQ(listed.code, ResultCode::CatalogueFileVersionUnsupported);
        EXPECT_EQ(listed.output, "[Info] Anti-cheat client configuration:\n[Info]     Version: " +
                                     std::to_string(version) +
                                     "\n[Err!] Called with an unsupported version!\n");
    }
}

TEST(RuntimeConfigurationReader, EveryTruncationIsTooSmall) {
    const Bytes whole = ScrambledFile(PlainFile());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Listed listed = List(Bytes(whole.begin(), whole.begin() + static_cast<int>(size)));
        EXPECT_EQ(listed.code, ResultCode::FileInvalid) << size;
        EXPECT_EQ(listed.output, TooSmall(size));
        EXPECT_EQ(listed.configuration.maxActiveInstances, 77U);
    }
}

TEST(RuntimeConfigurationReader, MagicMustBeThere) {
    for (std::size_t offset = 0; offset < 4; ++offset) {
        Bytes plain = PlainFile();
        plain[offset] ^= 0x80U;
        const Listed listed = List(ScrambledFile(plain));
        EXPECT_EQ(listed.code, ResultCode::FileInvalid) << offset;
        EXPECT_EQ(listed.output, "[Err!] Unsupported file format.\n");
        EXPECT_EQ(listed.configuration.maxActiveInstances, 77U);
    }
}

TEST(RuntimeConfigurationReader, LongerFileIsUnscrambledFromItsRealEnd) {
    Bytes stored = ScrambledFile(PlainFile());
    stored.push_back(1);
    const Listed listed = List(stored);
    EXPECT_EQ(listed.code, ResultCode::FileInvalid);
    EXPECT_EQ(listed.output, "[Err!] Unsupported file format.\n");
    Bytes plain = PlainFile();
    plain.resize(2000, 9);
    EXPECT_EQ(List(ScrambledFile(plain)).output, Shown("CrashReporter", "Generic"));
}

TEST(RuntimeConfigurationReader, NoSignatureIsLookedAtToList) {
    Bytes plain = Signed(PlainFile());
    plain[4] ^= 1U;
    plain[1031] = 0xFF;
    EXPECT_EQ(List(ScrambledFile(plain)).code, ResultCode::Ok);
}

// The change spreads to the first byte.
TEST(RuntimeConfigurationReader, EverySingleByteChangeSpoilsTheMagic) {
    const Bytes whole = ScrambledFile(Signed(PlainFile()));
    for (std::size_t offset = 0; offset < whole.size(); ++offset) {
        Bytes changed = whole;
        changed[offset] ^= static_cast<std::uint8_t>(1U << (offset % 8));
        const Listed listed = List(changed);
        EXPECT_EQ(listed.code, ResultCode::FileInvalid) << offset;
        EXPECT_EQ(listed.output, "[Err!] Unsupported file format.\n") << offset;
    }
}

// Also checks that nothing is printed.
bool IsValid(Bytes stored, const std::string& kind = "good") {
    Certificate certificate;
    EXPECT_EQ(ParseCertificate(CertificateBytes(kind), certificate), 0);
    CapturedOutput output;
    const bool valid = ValidateRuntimeConfiguration(stored, certificate);
    EXPECT_EQ(output.Take(), "");
    return valid;
}

TEST(RuntimeConfigurationReader, ValidatesWithTheSignersCertificate) {
    const Bytes stored = ScrambledFile(Signed(PlainFile()));
    EXPECT_TRUE(IsValid(stored));
    EXPECT_FALSE(IsValid(stored, "other-key"));
    EXPECT_FALSE(IsValid(stored, "big-key"));
    EXPECT_FALSE(IsValid(ScrambledFile(PlainFile())));
}

TEST(RuntimeConfigurationReader, EveryTruncationIsInvalid) {
    const Bytes whole = ScrambledFile(Signed(PlainFile()));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_FALSE(IsValid(Bytes(whole.begin(), whole.begin() + static_cast<int>(size)))) << size;
    }
}

TEST(RuntimeConfigurationReader, EverySingleByteChangeIsInvalid) {
    const Bytes whole = ScrambledFile(Signed(PlainFile()));
    for (std::size_t offset = 0; offset < whole.size(); ++offset) {
        Bytes changed = whole;
        changed[offset] ^= static_cast<std::uint8_t>(1U << (offset % 8));
        EXPECT_FALSE(IsValid(changed)) << offset;
    }
}

TEST(RuntimeConfigurationReader, EveryPlainByteButTheTailOfTheAreaIsSigned) {
    const Bytes whole = Signed(PlainFile());
    for (std::size_t offset = 0; offset < whole.size(); ++offset) {
        Bytes changed = whole;
        changed[offset] ^= 1U;
        const bool isTail = offset >= 4 + kSignatureBytes && offset < 1028;
        EXPECT_EQ(IsValid(ScrambledFile(changed)), isTail) << offset;
    }
}

TEST(RuntimeConfigurationReader, SignatureLengths) {
    for (const std::uint32_t length : {0U, 255U, 257U, 1024U, 1025U, 0xFFFFFFFFU}) {
        Bytes plain = Signed(PlainFile());
        StoreLittleEndian(length, std::span(plain).subspan(1028));
        EXPECT_FALSE(IsValid(ScrambledFile(plain))) << length;
    }
}

TEST(RuntimeConfigurationReader, AllOfTheFileIsSignedWhateverItsSize) {
    Bytes longer = ScrambledFile(Signed(PlainFile()));
    longer.push_back(0);
    EXPECT_FALSE(IsValid(longer));
    for (const std::size_t size : std::vector<std::size_t>{1032, 1033, 1107, 1109, 5000}) {
        EXPECT_TRUE(IsValid(ScrambledFile(Signed(Bytes(size, 0))))) << size;
    }
    // Without a signature length there is no signature.
    for (const std::size_t size : std::vector<std::size_t>{0, 1, 2, 1031}) {
        EXPECT_FALSE(IsValid(Bytes(size, 0xA5))) << size;
    }
}

TEST(RuntimeConfigurationReader, UnscramblesInPlace) {
    const Bytes plain = Signed(PlainFile());
    Bytes listed = ScrambledFile(plain);
    RuntimeConfiguration configuration;
    CapturedOutput output;
    EXPECT_EQ(ListRuntimeConfiguration(listed, configuration), ResultCode::Ok);
    EXPECT_EQ(listed, plain);
}

}  // namespace
}  // namespace sealkeeper
