#include <glob.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/command_line_options.h"
#include "app/generate_action.h"
#include "catalogue/catalogue_test_support.h"
#include "fault/fault_injection.h"
#include "support/captured_output.h"
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

constexpr const char* kConfig =
    "config_info { version = 2; }\n"
    "search_options { exclude_paths = [\"Quorvane\", \"none*\"]; }\n";

// A whole run over a game of two files.
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

    // A run loads into the options, so what an earlier one left there goes first.
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

    // What every run of this fixture prints first.
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
    // In mbed TLS 3.6 keys are read and compared with random numbers, too, so only the last seeding
    // fails: the one before it is that of runtime.conf.
    test::ResetCallCount(Call::SeedGenerator);
    ASSERT_EQ(Run(), 0);
    const std::size_t seedings = test::CallCount(Call::SeedGenerator);
    std::filesystem::remove(Output("base.bin"));
    const ScopedFault fault(Call::SeedGenerator, seedings - 1);
    EXPECT_EQ(Run(), 12);
    EXPECT_TRUE(
        Printed("[Err!] No catalogue file was created. Code 12 (MbedTlsRandNumGenError).\n"
                "[Info] [Success] Certificate copied: " +
                Output("base.cer") + "\n"));
    EXPECT_FALSE(HasOutput("base.bin"));
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
    for (const Call call : {Call::Fwrite, Call::Fflush}) {
        for (const OutputCase& failing : cases) {
            const ScopedFault fault(call, failing.index, ScopedFault::Reach::Once);
            EXPECT_EQ(Run(), failing.code) << failing.name;
            EXPECT_TRUE(output_.ends_with(failing.lastLines)) << output_;
            EXPECT_TRUE(fault.Struck());
        }
    }
}

TEST_F(GenerateFaults, CertificateCopyThatCannotBeClosedFailsInSilence) {
    // Every file but the copy is closed first, whatever was read before.
    test::ResetCallCount(Call::Fclose);
    ASSERT_EQ(Run(), 0);
    // `CapturedOutput` closed a file of its own at the end.
    const std::size_t closedByTheRun = test::CallCount(Call::Fclose) - 1;
    const ScopedFault fault(Call::Fclose, closedByTheRun - 1, ScopedFault::Reach::Once);
    EXPECT_EQ(Run(), 27);
    EXPECT_TRUE(output_.ends_with(
        "[Info] [Success] QVR Hash Catalogue created: " + Output("base.bin") + "\n"))
        << output_;
    EXPECT_TRUE(fault.Struck());
}

TEST_F(GenerateFaults, DirectoryThatCannotBeListed) {
    // Deepest last: the second listing is that of "sub".
    const ScopedFault fault(Call::Scandir, 1);
    EXPECT_EQ(Run(), 0);
    EXPECT_TRUE(Printed("[Err!] Unable to open './sub/'.\n")) << output_;
    EXPECT_TRUE(Printed("[Info] Hashing ./a.dat...\n"));
    EXPECT_FALSE(Printed("b.dat"));
}

TEST_F(GenerateFaults, GameDirectoryThatCannotBeListed) {
    const ScopedFault fault(Call::Scandir);
    EXPECT_EQ(Run(), 7);
    EXPECT_TRUE(output_.ends_with(
        "[Err!] Unable to open './'.\n"
        "[Err!] Cannot create an empty catalogue, at least all executables and libraries must be "
        "included.[Err!] No catalogue file was created. Code 7 (CatalogueError).\n"
        "[Info] [Success] Certificate copied: " +
        Output("base.cer") + "\n"))
        << output_;
}

TEST_F(GenerateFaults, EntriesOfUnknownTypeAreAskedFor) {
    std::filesystem::create_symlink("a.dat", game_ / "link.dat");
    const ScopedFault fault(Call::ScandirTypes);
    EXPECT_EQ(Run(), 0);
    EXPECT_TRUE(fault.Struck());
    EXPECT_TRUE(Printed("[Info] Hashing ./a.dat...\n[Info] Hashing ./sub/b.dat...\n")) << output_;
    EXPECT_FALSE(Printed("link.dat"));
}

struct GlobCase {
    int result;
    const char* shown;
};

TEST_F(GenerateFaults, PatternsThatCannotBeExpanded) {
    for (const GlobCase& failing :
         std::vector<GlobCase>{{GLOB_NOSPACE, "-1"}, {GLOB_ABORTED, "-2"}}) {
        const ScopedFault fault(Call::Glob, 0, ScopedFault::Reach::Onwards, failing.result);
        EXPECT_EQ(Run(), 0);
        EXPECT_TRUE(Printed("[Warn] Failed to glob path './none*' (Error " +
                            std::string(failing.shown) + ").\n"))
            << output_;
    }
}

}  // namespace
}  // namespace sealkeeper
