#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "app/console_log.h"
#include "app/game_verification.h"
#include "app/verify_action.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/hash_catalogue.h"
#include "fault/fault_injection.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::CertificatePath;
using test::kTestProductId;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

// Removes progress dots. On a slow machine they end a verdict's line or stand on a line of their
// own. No other line of verify ends in more than one dot.
std::string WithoutDots(const std::string& text) {
    std::string kept;
    for (const char character : text) {
        const bool isProgress = character == '.' && (kept.ends_with('.') || kept.ends_with('\n'));
        if (!isProgress) {
            kept += character;
        }
    }
    return kept;
}

// A complete run on an installed game of two files.
class VerifyFaults : public testing::Test {
  protected:
    VerifyFaults() : here_(game_.Path()) {
        game_.WriteFile("a.dat", "hello");
        game_.WriteFile("b.dat", "world");
        game_.WriteFile("Quorvane/Certificates/base.cer", ReadFile(CertificatePath("good")));
        PrivateKey key;
        test::LoadKey("good", key);
        HashCatalogue catalogue(kTestProductId);
        RuntimeConfiguration configuration;
        configuration.version = 1;
        CapturedOutput output;
        EXPECT_EQ(catalogue.CreateCatalogue(key.Get(), {}, {{L"./a.dat", {}}, {L"./b.dat", {}}},
                                            L"Quorvane/Certificates/base.bin", {}),
                  ResultCode::Ok);
        EXPECT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), Directory()), ResultCode::Ok);
        options_.action = ActionKind::Verify;
        options_.productId = kTestProductId;
        options_.verifyDir = game_ / "";
    }

    int Run() {
        CapturedOutput output;
        const ResultCode code = RunVerifyAction(options_);
        output_ = WithoutDots(output.Take());
        return ResultCodeNumber(code);
    }

    [[nodiscard]] std::string Directory() const { return game_ / "Quorvane/Certificates/"; }

    // What every run of this fixture prints before it reads the catalogue.
    [[nodiscard]] std::string Start() const {
        return "[Info] Looking for the catalogue to validate under: '" + Directory() + "'.\n";
    }
    [[nodiscard]] std::string Reading() const {
        return Start() + "[Info] Changed working directory to: '" + game_.Path() +
               "/'.\n[Info] Reading the contents of: 'base.bin'.\n";
    }
    [[nodiscard]] std::string Checked() const {
        return Reading() +
               "[Info] Added 2 file entries from 'base.bin'\n"
               "[Info] Will begin the validation of 2 files:\n"
               "\n[Info] [Success] Successfully verified 'a.dat'."
               "\n[Info] [Success] Successfully verified 'b.dat'."
               "\n\n[Info] Verification summary:\n"
               "[Info] =======================================\n"
               "[Info] Code 0 (Ok): 2 files.\n\n";
    }
    [[nodiscard]] std::string Validating() const {
        return "[Info] Validating runtime configuration file at: " + Directory() + "runtime.conf\n";
    }

    TempDirectory game_;
    ScopedCurrentDirectory here_;
    CommandLineOptions options_;
    std::string output_;
};

TEST_F(VerifyFaults, NothingFailsWithoutAFault) {
    EXPECT_EQ(Run(), 0);
    EXPECT_EQ(output_, Checked() + Validating() +
                           "[Info] Successfully verified the certificate for product ID: "
                           "TestProduct42\n[Info] Successfully validated runtime configuration: '" +
                           Directory() + "runtime.conf'.\n");
}

TEST_F(VerifyFaults, SearchThatFails) {
    {
        const ScopedFault fault(Call::Opendir, 0, Reach::Onwards, EACCES);
        EXPECT_EQ(Run(), 3);
        EXPECT_EQ(output_,
                  Start() + "[Err!] Couldn't find the .bin file under: '" + Directory() + "'.\n");
    }
    // A catalogue that the system fails to list would go unchecked.
    for (const std::size_t entry : {0U, 1U, 2U, 3U, 4U, 5U}) {
        const ScopedFault fault(Call::Readdir, entry, Reach::Once, EIO);
        EXPECT_EQ(Run(), 3) << entry;
        EXPECT_EQ(output_, Start() + "[Err!] Could not read the directory '" + Directory() +
                               "': Input/output error.\n");
        EXPECT_TRUE(fault.Struck());
    }
}

// The clock decides whether a certificate has expired.
TEST_F(VerifyFaults, VerdictFollowsTheClock) {
    constexpr int kBeginOf2037 = 2'114'380'800;
    constexpr int kBeginOf2025 = 1'735'689'600;
    {
        const ScopedFault later(Call::Time, 0, Reach::Onwards, kBeginOf2037);
        EXPECT_EQ(Run(), 30);
    }
    {
        const ScopedFault beforeTheAuthority(Call::Time, 0, Reach::Onwards, kBeginOf2025);
        EXPECT_NE(Run(), 0);
    }
    EXPECT_EQ(Run(), 0);
}

TEST_F(VerifyFaults, GameDirectoryThatCannotBeEntered) {
    const ScopedFault fault(Call::Chdir);
    EXPECT_EQ(Run(), 5);
    EXPECT_EQ(output_,
              Start() + "[Err!] Failed to set working directory: '" + game_.Path() + "/'.\n");
}

TEST_F(VerifyFaults, TellsWhyTheGameDirectoryCannotBeEntered) {
    const ScopedFault fault(Call::Chdir);
    // What is logged in between changes errno.
    SendLogTo([](LogLevel, std::string_view) { errno = 0; });
    GameVerification game(options_);
    EXPECT_EQ(game.FindCatalogues(), ResultCode::InitFailedWorkingDirectory);
    SendLogTo(nullptr);
    EXPECT_EQ(game.DirectoryError(), EACCES);
}

// The files in the order in which a run opens them.
enum Opened : std::size_t { Catalogue, Certificate, FileA, FileB, Settings, CertificateAgain };

// The number of earlier calls. A catalogue takes two reads, the header first. None of these read
// the game's own files.
std::size_t FirstFailing(Call call, Opened file) {
    constexpr std::size_t kGameFiles = 2;
    if (call == Call::Open) {
        return file;
    }
    const std::size_t firstRead = file == Catalogue ? 0 : file + 1;
    return file < FileA ? firstRead : firstRead - kGameFiles;
}

struct CatalogueFault {
    const char* name;
    Call call;
    std::size_t firstFailing;
    std::string shownCode;
    int code;
};

TEST_F(VerifyFaults, CatalogueOrCertificateThatCannotBeRead) {
    const std::string catalogueCode = "8 (CatalogueIOError)";
    const std::vector<CatalogueFault> faults = {
        {"open base.bin", Call::Open, Catalogue, catalogueCode, 8},
        {"fdopen base.bin", Call::Fdopen, Catalogue, catalogueCode, 8},
        {"seek to the end of base.bin", Call::Fseeko, 0, catalogueCode, 8},
        {"seek to its start", Call::Fseeko, 1, catalogueCode, 8},
        {"read the header", Call::Fread, FirstFailing(Call::Fread, Catalogue), catalogueCode, 8},
        {"read the rest", Call::Fread, FirstFailing(Call::Fread, Catalogue) + 1, catalogueCode, 8},
        {"open base.cer", Call::Open, Certificate, "27 (CertIOError)", 27},
        {"read base.cer", Call::Fread, FirstFailing(Call::Fread, Certificate), "27 (CertIOError)",
         27},
    };
    for (const CatalogueFault& failing : faults) {
        const ScopedFault fault(failing.call, failing.firstFailing, Reach::Once);
        EXPECT_EQ(Run(), failing.code) << failing.name;
        EXPECT_EQ(output_, Reading() +
                               "[Err!] Reading the catalogue 'base.bin' file failed. Code " +
                               failing.shownCode + "\n");
    }
}

TEST_F(VerifyFaults, CatalogueIsOpenedOnce) {
    const ScopedFault fault(Call::Open, CertificateAgain + 1);
    EXPECT_EQ(Run(), 0);
    EXPECT_FALSE(fault.Struck());
}

TEST_F(VerifyFaults, CatalogueReadWithWrongBytes) {
    const ScopedFault fault(Call::FreadBytes, 0, Reach::Once);
    EXPECT_EQ(Run(), 9);
    EXPECT_EQ(
        output_,
        Reading() + "[Err!] Reading the catalogue 'base.bin' file failed. Code 9 (FileInvalid)\n");
}

TEST_F(VerifyFaults, FileThatCannotBeOpened) {
    const ScopedFault fault(Call::Open, FileA, Reach::Once);
    EXPECT_EQ(Run(), 23);
    EXPECT_NE(output_.find("\n[Err!] [Failure] Failed to verify 'a.dat' - Code 23 "
                           "(FileVerificationIOError)."
                           "\n[Info] [Success] Successfully verified 'b.dat'.\n\n"
                           "[Info] Verification summary:\n"
                           "[Info] =======================================\n"
                           "[Info] Code 0 (Ok): 1 files.\n\n"
                           "[Info] Code 23 (FileVerificationIOError): 1 files.\n\n"),
              std::string::npos)
        << output_;
}

TEST_F(VerifyFaults, FileWithANegativeSize) {
    const ScopedFault fault(Call::Stat, 0, Reach::Onwards, -1);
    EXPECT_EQ(Run(), 23);
    EXPECT_NE(output_.find("[Failure] Failed to verify 'b.dat' - Code 23"), std::string::npos)
        << output_;
}

TEST_F(VerifyFaults, RuntimeConfigurationThatCannotBeReadIsPassedOver) {
    for (const Call call : {Call::Open, Call::Fread}) {
        const ScopedFault fault(call, FirstFailing(call, Settings), Reach::Once);
        EXPECT_EQ(Run(), 0);
        EXPECT_TRUE(fault.Struck());
        EXPECT_EQ(output_, Checked());
    }
}

TEST_F(VerifyFaults, CertificateOfRuntimeConfigurationThatCannotBeRead) {
    for (const Call call : {Call::Open, Call::Fread}) {
        const ScopedFault fault(call, FirstFailing(call, CertificateAgain), Reach::Once);
        EXPECT_EQ(Run(), 27);
        EXPECT_EQ(output_, Checked() + Validating() + "[Err!] Failed to read certificate file " +
                               Directory() + "base.cer.\n");
    }
}

TEST_F(VerifyFaults, FailureOfRuntimeConfigurationComesBeforeThatOfAFile) {
    game_.WriteFile("a.dat", "hello!");
    EXPECT_EQ(Run(), 24);
    const ScopedFault fault(Call::Open, CertificateAgain, Reach::Once);
    EXPECT_EQ(Run(), 27);
}

TEST_F(VerifyFaults, RuntimeConfigurationReadWithWrongBytes) {
    const ScopedFault fault(Call::FreadBytes, FirstFailing(Call::FreadBytes, Settings),
                            Reach::Once);
    EXPECT_EQ(Run(), 22);
    EXPECT_TRUE(output_.ends_with("[Err!] Validation of runtime configuration failed: '" +
                                  Directory() + "runtime.conf'.\n"))
        << output_;
}

}  // namespace
}  // namespace sealkeeper
