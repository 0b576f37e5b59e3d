#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/program.h"
#include "catalogue/hash_catalogue.h"
#include "fault/fault_injection.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/child_process.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::LoadKey;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;

// Space reserved in advance for the compressed block. Without it, the block grows on demand.
constexpr std::size_t kNotNeeded = 1;

TEST(MemoryFaults, CatalogueWithoutMemoryFailsWithAMessage) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("a", "hello");
    PrivateKey key;
    LoadKey("good", key);
    HashCatalogue catalogue("product");
    const std::vector<FoundFile> files = {{L"./b", {}}, {L"./a", {}}};
    bool struck = true;
    std::size_t survived = 0;
    // Every allocation fails once. The run after the last of them succeeds.
    for (std::size_t allocation = 0; struck; ++allocation) {
        ASSERT_LT(allocation, 1000U);
        std::vector<FoundFile> given = files;
        const std::wstring path = L"base.bin";
        CapturedOutput output;
        ScopedFault fault(Call::Allocation, allocation, ScopedFault::Reach::Once);
        const ResultCode code =
            catalogue.CreateCatalogue(key.Get(), {}, std::move(given), path, {});
        fault.Disarm();
        struck = fault.Struck();
        const std::string text = output.Take();
        if (struck && code == ResultCode::Ok) {
            ++survived;
        } else if (struck) {
            EXPECT_EQ(code, ResultCode::CatalogueError) << allocation;
            EXPECT_TRUE(text.ends_with("[Err!] Not enough memory for the catalogue.\n"))
                << allocation << text;
        } else {
            EXPECT_EQ(code, ResultCode::Ok);
            EXPECT_GT(allocation, 5U);
        }
    }
    EXPECT_EQ(survived, kNotNeeded);
    EXPECT_TRUE(std::filesystem::exists("base.bin"));
}

struct RunOutcome {
    int status;
    bool struck;
    std::string output;
};

// In a process of its own, since a run changes the process-wide options and the current directory.
RunOutcome RunWithFault(const std::vector<const char*>& arguments, std::size_t allocation) {
    constexpr int kNotStruckBit = 0x80;
    CapturedOutput output;
    const pid_t child = fork();
    if (child == 0) {
        ScopedFault fault(Call::Allocation, allocation, ScopedFault::Reach::Once);
        const int status = RunProgram(static_cast<int>(arguments.size()), arguments.data());
        std::fflush(stdout);
        fault.Disarm();
        test::EndChild(fault.Struck() ? status : status | kNotStruckBit);
    }
    int raw = 0;
    EXPECT_EQ(waitpid(child, &raw, 0), child);
    EXPECT_TRUE(WIFEXITED(raw)) << "allocation " << allocation << " ended in a signal";
    const int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return {status & ~kNotStruckBit, (status & kNotStruckBit) == 0, output.Take()};
}

TEST(MemoryFaults, EveryAllocationOfARunMayFail) {
    const TempDirectory work;
    const TempDirectory game;
    game.WriteFile("a.dat", "hello");
    const std::string config = work.WriteFile(
        "game.cfg",
        "config_info { version = 2; }\nsearch_options { exclude_paths = [\"Quorvane\", \"n*\"]; }\n"
        "runtime_configuration { crash_reporter_name = \"a crash reporter of this game\"; }\n");
    const std::string key = test::PrivateKeyPath("good");
    const std::string certificate = test::CertificatePath("good");
    const std::vector<const char*> arguments = {
        "sealkeeper",        "-productid",  test::kTestProductId, "-inkey",
        key.c_str(),         "-incert",     certificate.c_str(),  "-target_game_dir",
        game.Path().c_str(), config.c_str()};
    bool struck = true;
    std::size_t outOfMemory = 0;
    std::size_t withoutCatalogue = 0;
    std::size_t survived = 0;
    std::size_t withoutPatterns = 0;
    for (std::size_t allocation = 0; struck; ++allocation) {
        ASSERT_LT(allocation, 5000U);
        const RunOutcome outcome = RunWithFault(arguments, allocation);
        struck = outcome.struck;
        if (!struck) {
            EXPECT_EQ(outcome.status, 0) << outcome.output;
        } else if (outcome.status == 2) {
            ++outOfMemory;
            EXPECT_TRUE(outcome.output.ends_with("[Err!] Out of memory.\n")) << outcome.output;
            if (outcome.output.find("[Warn] Failed to glob path './n*' (Error -1).\n") !=
                std::string::npos) {
                ++withoutPatterns;
            }
        } else if (outcome.status == 0) {
            ++survived;
        } else {
            ++withoutCatalogue;
            EXPECT_EQ(outcome.status, 7) << outcome.output;
            EXPECT_NE(outcome.output.find("[Err!] Not enough memory for the catalogue.\n[Err!] No "
                                          "catalogue file was created. Code 7 (CatalogueError).\n"),
                      std::string::npos)
                << outcome.output;
        }
    }
    EXPECT_GT(outOfMemory, 50U);
    EXPECT_GT(withoutPatterns, 0U);
    EXPECT_GT(withoutCatalogue, 5U);
    EXPECT_EQ(survived, kNotNeeded);
}

// An installed game of two files, with everything that verify and list read.
void InstallGame(const TempDirectory& game) {
    const ScopedCurrentDirectory here(game.Path());
    game.WriteFile("a file of a name too long for a short string.dat", "hello");
    game.WriteFile("b", "world");
    game.WriteFile("Quorvane/Certificates/base.cer", test::ReadFile(test::CertificatePath("good")));
    PrivateKey key;
    LoadKey("good", key);
    HashCatalogue catalogue(test::kTestProductId);
    RuntimeConfiguration configuration;
    configuration.version = 1;
    const CapturedOutput output;
    ASSERT_EQ(catalogue.CreateCatalogue(
                  key.Get(), {},
                  {{L"./a file of a name too long for a short string.dat", {}}, {L"./b", {}}},
                  L"Quorvane/Certificates/base.bin", {}),
              ResultCode::Ok);
    ASSERT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), game / "Quorvane/Certificates/"),
              ResultCode::Ok);
}

struct MemoryOutcomes {
    std::size_t outOfMemory = 0;
    std::size_t withoutCatalogue = 0;
};

// Runs with every allocation failing once. Each run ends with a message: the program's own, or
// `catalogueMessage` after the catalogue's.
MemoryOutcomes FailEveryAllocation(const std::vector<const char*>& arguments,
                                   const std::string& catalogueMessage) {
    MemoryOutcomes outcomes;
    bool struck = true;
    for (std::size_t allocation = 0; struck && allocation < 5000; ++allocation) {
        const RunOutcome outcome = RunWithFault(arguments, allocation);
        struck = outcome.struck;
        if (!struck) {
            EXPECT_EQ(outcome.status, 0) << outcome.output;
        } else if (outcome.status == 2) {
            ++outcomes.outOfMemory;
            EXPECT_TRUE(outcome.output.ends_with("[Err!] Out of memory.\n")) << outcome.output;
        } else {
            ++outcomes.withoutCatalogue;
            EXPECT_EQ(outcome.status, 7) << outcome.output;
            EXPECT_TRUE(outcome.output.ends_with("[Err!] Not enough memory for the catalogue.\n" +
                                                 catalogueMessage))
                << outcome.output;
        }
    }
    EXPECT_FALSE(struck);
    return outcomes;
}

TEST(MemoryFaults, EveryAllocationOfVerifyingMayFail) {
    const TempDirectory game;
    InstallGame(game);
    const MemoryOutcomes outcomes = FailEveryAllocation(
        {"sealkeeper", "-productid", test::kTestProductId, "verify", game.Path().c_str()},
        "[Err!] Reading the catalogue 'base.bin' file failed. Code 7 (CatalogueError)\n");
    EXPECT_GT(outcomes.outOfMemory, 30U);
    EXPECT_GT(outcomes.withoutCatalogue, 5U);
}

TEST(MemoryFaults, EveryAllocationOfListingACatalogueMayFail) {
    const TempDirectory game;
    InstallGame(game);
    const std::string path = game / "Quorvane/Certificates/base.bin";
    const MemoryOutcomes outcomes = FailEveryAllocation(
        {"sealkeeper", "list", path.c_str()},
        "[Warn] GetUnverifiedCatalogueFileList() failed. Code 7 (CatalogueError).\n");
    // The number of allocations depends on the compiler, which may omit some, and on what the
    // process has allocated permanently.
    EXPECT_GT(outcomes.outOfMemory, 5U);
    EXPECT_GT(outcomes.withoutCatalogue, 3U);
}

TEST(MemoryFaults, EveryAllocationOfListingARuntimeConfigurationMayFail) {
    const TempDirectory game;
    InstallGame(game);
    const std::string path = game / "Quorvane/Certificates/runtime.conf";
    const MemoryOutcomes outcomes = FailEveryAllocation({"sealkeeper", "list", path.c_str()}, "");
    EXPECT_GT(outcomes.outOfMemory, 3U);
    EXPECT_EQ(outcomes.withoutCatalogue, 0U);
}

}  // namespace
}  // namespace sealkeeper
