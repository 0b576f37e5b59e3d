#include <gtest/gtest.h>
#include <mbedtls/x509.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "app/command_line_options.h"
#include "app/generate_action.h"
#include "catalogue/catalogue_test_support.h"
#include "fault/fault_injection.h"
#include "support/captured_output.h"
#include "support/core_dump_limit.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::CertificatePath;
using test::kTestProductId;
using test::PrivateKeyPath;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;
using test::WithoutProgressDots;

using Reach = ScopedFault::Reach;

constexpr const char* kConfig =
    "config_info { version = 2; }\n"
    "search_options { exclude_paths = [\"Quorvane\", \"none*\"]; }\n";

// A complete run on a game of two files.
class GenerateFaults : public testing::Test {
  protected:
    GenerateFaults() : here_(work_.Path()) {
        game_.WriteFile("a.dat", "hello");
        game_.WriteFile("sub/b.dat", "hello");
        options_.action = ActionKind::Generate;
        options_.productId = kTestProductId;
        options_.privateKeyFile = PrivateKeyPath("good");
        options_.certificateFile = CertificatePath("good");
        options_.configFile = work_.WriteFile("game.cfg", kConfig);
        options_.targetGameDir = game_.Path();
    }

    // A run stores into the options, so they are reset first.
    int Run() {
        options_.signingMaterial.privateKey.Reset();
        options_.configDocument = {};
        CapturedOutput output;
        const ResultCode code = RunGenerateAction(options_);
        output_ = WithoutProgressDots(output.Take());
        return ResultCodeNumber(code);
    }

    [[nodiscard]] std::string Output(const std::string& name) const {
        return game_ / ("Quorvane/Certificates/" + name);
    }
    [[nodiscard]] bool HasOutput(const std::string& name) const {
        return std::filesystem::exists(Output(name));
    }
    [[nodiscard]] bool Printed(const std::string& text) const {
        return output_.find(text) != std::string::npos;
    }

    // What every run of this fixture prints at the start.
    [[nodiscard]] std::string Start() const {
        return "[Info] Generating signed integrity files for: '" + game_.Path() +
               "'.\n[Info] Using '" + game_.Path() +
               "/' as working directory.\n"
               "[Info] Generating the game's main catalogue alongside the associated folder "
               "structure.\n";
    }

    TempDirectory work_;
    TempDirectory game_;
    ScopedCurrentDirectory here_;
    CommandLineOptions options_;
    std::string output_;
};

TEST_F(GenerateFaults, NothingFailsWithoutAFault) {
    EXPECT_EQ(Run(), 0) << output_;
    EXPECT_TRUE(HasOutput("base.bin"));
    EXPECT_TRUE(HasOutput("runtime.conf"));
    EXPECT_EQ(ReadFile(Output("base.cer")), ReadFile(CertificatePath("good")));
}

TEST_F(GenerateFaults, NoCurrentDirectory) {
    const ScopedFault fault(Call::GetCwd);
    EXPECT_EQ(Run(), 3);
    EXPECT_EQ(output_, Start() + "[Err!] Failed to get working directory for current process.\n");
    EXPECT_FALSE(HasOutput("base.cer"));
}

TEST_F(GenerateFaults, GameDirectoryThatCannotBeEntered) {
    const ScopedFault fault(Call::Chdir);
    EXPECT_EQ(Run(), 5);
    EXPECT_EQ(output_, Start() + "[Info] Using config version: 2.\n");
    EXPECT_FALSE(HasOutput("base.cer"));
}

TEST_F(GenerateFaults, NoEntropyForTheCatalogue) {
    // Keys are read and compared without random numbers, and runtime.conf is written with an empty
    // signature.
    const ScopedFault fault(Call::SeedGenerator);
    EXPECT_EQ(Run(), 12);
    EXPECT_TRUE(
        Printed("[Err!] No catalogue file was created. Code 12 (MbedTlsRandNumGenError).\n"
                "[Info] [Success] Certificate copied: " +
                Output("base.cer") + "\n"));
    EXPECT_TRUE(HasOutput("runtime.conf"));
    EXPECT_FALSE(HasOutput("base.bin"));
}

// The first check is that at loading. A certificate trusted there cannot turn into a mod's.
TEST_F(GenerateFaults, CertificateThatCannotBeCheckedAgain) {
    for (const int result : {MBEDTLS_ERR_X509_ALLOC_FAILED, MBEDTLS_ERR_X509_CERT_VERIFY_FAILED}) {
        const ScopedFault fault(Call::VerifyChain, 1, Reach::Once, result);
        EXPECT_EQ(Run(), 22);
        EXPECT_TRUE(fault.Struck());
        EXPECT_TRUE(output_.ends_with(
            "[Err!] Failed to verify the certificate for product ID: TestProduct42\n"))
            << output_;
        EXPECT_FALSE(HasOutput("base.bin"));
        EXPECT_FALSE(HasOutput("runtime.conf"));
    }
}

// The outputs in the order in which a run writes them.
struct OutputCase {
    const char* name;
    std::size_t index;
    int code;
    std::string lastLines;
};

TEST_F(GenerateFaults, OutputsThatCannotBeWritten) {
    const std::vector<OutputCase> cases = {
        {"runtime.conf", 0, 3,
         "[Err!] Error writing to file stream: '" + Output("runtime.conf") + "'\n"},
        {"base.bin", 1, 8,
         "[Err!] Error writing to file stream: '" + Output("base.bin") +
             "'.\n[Err!] No catalogue file was created. Code 8 (CatalogueIOError).\n"
             "[Info] [Success] Certificate copied: " +
             Output("base.cer") + "\n"},
        {"base.cer", 2, 27,
         "[Info] [Success] QVR Hash Catalogue created: " + Output("base.bin") +
             "\n[Err!] Error copying certificate to working directory - error writing to "
             "stream.\n"},
    };
    for (const Call call : {Call::Write, Call::Fsync, Call::Rename}) {
        for (const OutputCase& failing : cases) {
            std::filesystem::remove_all(game_ / "Quorvane");
            // After each, its directory is flushed too.
            const std::size_t index = failing.index * (call == Call::Fsync ? 2 : 1);
            const ScopedFault fault(call, index, ScopedFault::Reach::Once);
            EXPECT_EQ(Run(), failing.code) << failing.name;
            EXPECT_TRUE(output_.ends_with(failing.lastLines)) << output_;
            EXPECT_TRUE(fault.Struck());
            EXPECT_FALSE(HasOutput(failing.name));
        }
    }
}

TEST_F(GenerateFaults, CertificateCopyThatCannotBeClosedFailsInSilence) {
    // The last of the three.
    const ScopedFault fault(Call::CloseWritten, 2, ScopedFault::Reach::Once);
    EXPECT_EQ(Run(), 27);
    EXPECT_TRUE(output_.ends_with(
        "[Info] [Success] QVR Hash Catalogue created: " + Output("base.bin") + "\n"))
        << output_;
    EXPECT_TRUE(fault.Struck());
    EXPECT_FALSE(HasOutput("base.cer"));
}

TEST_F(GenerateFaults, CoreDumpsAreOffBeforeThePrivateKeyIsRead) {
    test::LimitCoreDumps(1);
    if (!test::MayWriteCoreDumps()) {
        GTEST_SKIP() << "the process may write none in any case";
    }
    options_.privateKeyFile = work_ / "missing";
    EXPECT_EQ(Run(), 35);
    EXPECT_FALSE(test::MayWriteCoreDumps());
}

// The patterns are expanded first: "none*" in the game directory.
constexpr std::size_t kListingOfGameDirectory = 1;

TEST_F(GenerateFaults, DirectoryThatMustNotBeRead) {
    // The deepest comes last: after the game directory, "sub" is listed.
    const ScopedFault fault(Call::Opendir, kListingOfGameDirectory + 1, Reach::Once, EACCES);
    EXPECT_EQ(Run(), 0);
    EXPECT_TRUE(Printed("[Err!] Unable to open './sub/'.\n")) << output_;
    EXPECT_TRUE(Printed("[Info] Hashing ./a.dat...\n"));
    EXPECT_FALSE(Printed("b.dat"));
}

TEST_F(GenerateFaults, GameDirectoryThatMustNotBeRead) {
    const ScopedFault fault(Call::Opendir, kListingOfGameDirectory, Reach::Once, EACCES);
    EXPECT_EQ(Run(), 7);
    EXPECT_TRUE(output_.ends_with(
        "[Err!] Unable to open './'.\n"
        "[Err!] Cannot create an empty catalogue, at least all executables and libraries must be "
        "included.[Err!] No catalogue file was created. Code 7 (CatalogueError).\n"
        "[Info] [Success] Certificate copied: " +
        Output("base.cer") + "\n"))
        << output_;
}

// Whether any name needs a converter is known only when all are collected, before runtime.conf is
// written.
TEST_F(GenerateFaults, GameDirectoryThatFailsWhereAConverterIsMissing) {
    const ScopedFault missing(Call::IconvOpen);
    const ScopedFault fault(Call::Opendir, kListingOfGameDirectory, Reach::Once, EIO);
    EXPECT_EQ(Run(), 3);
    EXPECT_TRUE(
        output_.ends_with("[Err!] Could not read the directory './': Input/output error.\n"))
        << output_;
    EXPECT_FALSE(HasOutput("runtime.conf"));
}

TEST_F(GenerateFaults, EntriesOfUnknownTypeAreAskedFor) {
    std::filesystem::create_symlink("a.dat", game_ / "link.dat");
    const ScopedFault fault(Call::ReaddirTypes);
    EXPECT_EQ(Run(), 0);
    EXPECT_TRUE(fault.Struck());
    EXPECT_TRUE(Printed("[Info] Hashing ./a.dat...\n[Info] Hashing ./sub/b.dat...\n")) << output_;
    EXPECT_FALSE(Printed("link.dat"));
}

// In whichever directory and at whichever entry, nothing is silently left out.
TEST_F(GenerateFaults, SystemThatFailsToReadADirectoryEndsTheRun) {
    std::size_t entry = 0;
    for (bool struck = true; struck; ++entry) {
        ASSERT_LT(entry, 100U);
        const ScopedFault fault(Call::Readdir, entry, Reach::Once, EIO);
        const int status = Run();
        struck = fault.Struck();
        EXPECT_EQ(status, struck ? 3 : 0) << entry;
        EXPECT_EQ(Printed("[Err!] Could not read the directory '."), struck) << output_;
        EXPECT_EQ(HasOutput("base.bin"), !struck);
        EXPECT_EQ(HasOutput("base.cer"), !struck);
    }
    // The game directory is listed twice and "sub" once, each with dots and end.
    EXPECT_GT(entry, 12U);
}

TEST_F(GenerateFaults, PatternsThatCannotBeExpanded) {
    {
        const ScopedFault fault(Call::Readdir, 0, Reach::Once, EIO);
        EXPECT_EQ(Run(), 3);
        EXPECT_TRUE(Printed("[Warn] Failed to glob path './none*' (Error -2).\n")) << output_;
    }
    const ScopedFault fault(Call::Fnmatch, 0, Reach::Onwards, -1);
    EXPECT_EQ(Run(), 3);
    EXPECT_TRUE(
        output_.ends_with("[Err!] Could not match 'none*'.\n"
                          "[Warn] Failed to glob path './none*' (Error -2).\n"))
        << output_;
}

// From this offset on a catalogue is the same however it is signed.
constexpr std::size_t kSignedContentOffset = 1036;

TEST_F(GenerateFaults, FileWhoseSizeTheSystemFailsToTell) {
    test::ResetCallCount(Call::StatFailure);
    ASSERT_EQ(Run(), 0);
    const std::size_t looks = test::CallCount(Call::StatFailure);
    const std::string sealed = ReadFile(Output("base.bin")).substr(kSignedContentOffset);
    bool hasEnded = false;
    for (std::size_t look = 0; look < looks; ++look) {
        const ScopedFault fault(Call::StatFailure, look, Reach::Once, EIO);
        const int status = Run();
        EXPECT_TRUE(status != 0 ||
                    ReadFile(Output("base.bin")).substr(kSignedContentOffset) == sealed)
            << output_;
        if (Printed("[Err!] Could not look at './sub/b.dat': Input/output error.\n")) {
            EXPECT_EQ(status, 3);
            hasEnded = true;
        }
    }
    EXPECT_TRUE(hasEnded);
}

}  // namespace
}  // namespace sealkeeper
