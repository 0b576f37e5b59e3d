// Runs in which the system cannot convert text. No name may be replaced by the converter's error
// text in what is signed, found or shown.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "app/command_line_options.h"
#include "app/generate_action.h"
#include "app/list_action.h"
#include "app/verify_action.h"
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
using Reach = ScopedFault::Reach;

constexpr const char* kMessage =
    "[Err!] The system's character-set converter could not be used, so names would be wrong.\n";
constexpr std::size_t kHeldConverters = 4;
constexpr std::size_t kMoreCallsThanAnyRunHas = 200;

struct Failing {
    const char* name;
    Call call;
    Reach reach;
};

const std::vector<Failing> kFailures = {
    {"iconv_open once", Call::IconvOpen, Reach::Once},
    {"iconv_open from then on", Call::IconvOpen, Reach::Onwards},
    {"iconv once", Call::Iconv, Reach::Once},
    {"iconv from then on", Call::Iconv, Reach::Onwards},
};

class ConverterFaults : public testing::TestWithParam<std::size_t> {
  protected:
    ConverterFaults() : here_(work_.Path()) {
        WriteGame("g\u00e9.dat", "\u65e5\u672c/h\U0001f600.dat");
        options_.productId = kTestProductId;
        options_.privateKeyFile = PrivateKeyPath("good");
        options_.certificateFile = CertificatePath("good");
        options_.jobs = GetParam();
    }

    // Files named like the error texts must not be mistaken for the two.
    void WriteGame(const std::string& first, const std::string& second) {
        game_.WriteFile(first, "hello");
        game_.WriteFile(second, "hello");
        for (const char* name : {"U82W_ERROR", "W2U8_ERROR"}) {
            game_.WriteFile(name, "hello");
        }
        options_.configFile = WriteConfig("");
        options_.targetGameDir = game_.Path();
    }

    std::string WriteConfig(const std::string& more) {
        return work_.WriteFile("game.cfg",
                               "config_info { version = 2; }\n"
                               "search_options { exclude_paths = [\"Quorvane\", \"*_ERROR\"];" +
                                   more + " }\n");
    }

    // Runs an action in a fresh directory.
    template <typename Action>
    int Run(Action action) {
        options_.signingMaterial.privateKey.Reset();
        options_.configDocument = {};
        const ScopedCurrentDirectory here(work_.Path());
        CapturedOutput output;
        const ResultCode code = action();
        output_ = test::WithoutProgressDots(output.Take());
        return ResultCodeNumber(code);
    }
    int Generate() {
        return Run([this] { return RunGenerateAction(options_); });
    }
    int Verify() {
        options_.verifyDir = game_ / "";
        return Run([this] { return RunVerifyAction(options_); });
    }
    int List() {
        options_.listPath = Output("base.bin");
        return Run([this] { return RunListAction(options_); });
    }

    [[nodiscard]] std::string Output(const std::string& name) const {
        return game_ / ("Quorvane/Certificates/" + name);
    }
    [[nodiscard]] std::vector<std::string> Outputs() const {
        std::vector<std::string> names;
        for (const auto& file :
             std::filesystem::directory_iterator(game_ / "Quorvane/Certificates")) {
            names.push_back(file.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    void RemoveOutputs() { std::filesystem::remove_all(game_ / "Quorvane"); }
    [[nodiscard]] std::size_t Printed(const std::string& text) const {
        std::size_t count = 0;
        for (std::size_t at = output_.find(text); at != std::string::npos;
             at = output_.find(text, at + 1)) {
            ++count;
        }
        return count;
    }

    // Runs an action with each of its calls failing in turn. `check` examines each run that the
    // fault struck. Returns the number of such runs.
    template <typename Action, typename Check>
    std::size_t FailEveryCall(const Failing& failing, Action run, Check check) {
        for (std::size_t number = 0; number < kMoreCallsThanAnyRunHas; ++number) {
            ScopedFault fault(failing.call, number, failing.reach, ENOMEM);
            const int code = run();
            fault.Disarm();
            if (!fault.Struck()) {
                return number;
            }
            SCOPED_TRACE(std::string(failing.name) + " at " + std::to_string(number) + "\n" +
                         output_);
            check(number, code);
        }
        return kMoreCallsThanAnyRunHas;
    }

    TempDirectory work_;
    TempDirectory game_;
    ScopedCurrentDirectory here_;
    CommandLineOptions options_;
    std::string output_;
};

INSTANTIATE_TEST_SUITE_P(Jobs, ConverterFaults, testing::Values(std::size_t{1}, std::size_t{2}));

TEST_P(ConverterFaults, GenerateWritesNoCatalogue) {
    options_.configFile = WriteConfig("alias_paths = ( [\"\u65e5\u672c\", \"\u00e9\"] )");
    ASSERT_EQ(Generate(), 0) << output_;
    const std::string sound = ReadFile(Output("base.bin"));
    for (const Failing& failing : kFailures) {
        const auto generateAfresh = [this] {
            RemoveOutputs();
            return Generate();
        };
        const std::size_t struck =
            FailEveryCall(failing, generateAfresh, [&](std::size_t number, int code) {
                // A held converter is not missed if another can be opened later.
                if (code == 0) {
                    EXPECT_EQ(failing.reach, Reach::Once);
                    EXPECT_LT(number, kHeldConverters);
                    EXPECT_EQ(ReadFile(Output("base.bin")), sound);
                    return;
                }
                EXPECT_EQ(code, 7);
                EXPECT_EQ(Printed(kMessage), 1U);
                EXPECT_EQ(Outputs(), failing.call == Call::IconvOpen && number < kHeldConverters
                                         ? std::vector<std::string>{}
                                         : std::vector<std::string>{"runtime.conf"});
            });
        EXPECT_GT(struck, 2 * kHeldConverters) << failing.name;
    }
}

TEST_P(ConverterFaults, GenerateOfOneFileWritesNothing) {
    options_.configFile.clear();
    options_.targetFile = game_ / "g\u00e9.dat";
    ASSERT_EQ(Generate(), 0) << output_;
    for (const Failing& failing : kFailures) {
        const auto generateAfresh = [this] {
            RemoveOutputs();
            return Generate();
        };
        const std::size_t struck =
            FailEveryCall(failing, generateAfresh, [&](std::size_t /*number*/, int code) {
                EXPECT_EQ(code, 7);
                EXPECT_EQ(Outputs(), std::vector<std::string>{});
                EXPECT_TRUE(output_.ends_with(
                    std::string(kMessage) +
                    "[Err!] No catalogue file was created. Code 7 (CatalogueError).\n"));
            });
        EXPECT_GT(struck, 2U) << failing.name;
    }
}

TEST_P(ConverterFaults, GenerateOfAModWritesNothing) {
    options_.outputName = "mod\u00e9";
    ASSERT_EQ(Generate(), 0) << output_;
    const auto generateAfresh = [this] {
        for (const char* name : {"mod\u00e9.bin", "mod\u00e9.cer"}) {
            std::filesystem::remove(game_ / name);
        }
        return Generate();
    };
    for (const Failing& failing : kFailures) {
        const std::size_t struck =
            FailEveryCall(failing, generateAfresh, [&](std::size_t number, int code) {
                if (failing.call == Call::IconvOpen && failing.reach == Reach::Once &&
                    number < kHeldConverters) {
                    EXPECT_EQ(code, 0);
                    return;
                }
                EXPECT_EQ(code, 7);
                EXPECT_EQ(Printed(kMessage), 1U);
                EXPECT_FALSE(std::filesystem::exists(game_ / "mod\u00e9.bin"));
                EXPECT_FALSE(std::filesystem::exists(game_ / "mod\u00e9.cer"));
                for (const char* name : {"U82W_ERROR", "W2U8_ERROR"}) {
                    EXPECT_EQ(ReadFile(game_ / name), "hello");
                }
            });
        EXPECT_GT(struck, 2 * kHeldConverters) << failing.name;
    }
}

TEST_P(ConverterFaults, VerifyFindsNoFileMissingOrIntact) {
    ASSERT_EQ(Generate(), 0) << output_;
    ASSERT_EQ(Verify(), 0) << output_;
    const std::size_t verdicts = Printed("Successfully verified '");
    ASSERT_EQ(verdicts, 2U) << output_;
    for (const Failing& failing : kFailures) {
        const std::size_t struck = FailEveryCall(
            failing, [this] { return Verify(); },
            [&](std::size_t /*number*/, int code) {
                EXPECT_EQ(code, 7);
                EXPECT_TRUE(output_.ends_with(kMessage));
                EXPECT_EQ(Printed(kMessage), 1U);
                EXPECT_EQ(Printed("_ERROR"), 0U);
                EXPECT_EQ(Printed("Code 23"), 0U);
                EXPECT_LT(Printed("Successfully verified '"), verdicts);
            });
        EXPECT_GT(struck, 2U) << failing.name;
    }
}

TEST_P(ConverterFaults, VerifyOfACatalogueOfAnotherName) {
    ASSERT_EQ(Generate(), 0) << output_;
    std::filesystem::rename(Output("base.bin"), Output("m\u00e9.bin"));
    std::filesystem::rename(Output("base.cer"), Output("m\u00e9.cer"));
    std::filesystem::remove(Output("runtime.conf"));
    ASSERT_EQ(Verify(), 0) << output_;
    for (const Failing& failing : kFailures) {
        FailEveryCall(
            failing, [this] { return Verify(); },
            [&](std::size_t /*number*/, int code) {
                EXPECT_EQ(code, 7);
                EXPECT_EQ(Printed(kMessage), 1U);
                EXPECT_EQ(Printed("_ERROR"), 0U);
            });
    }
}

// A directory named like the error text would be another game.
TEST_P(ConverterFaults, VerifyOfADirectoryWithSuchAName) {
    ASSERT_EQ(Generate(), 0) << output_;
    const TempDirectory games;
    const std::string game = games / "g\u00e9";
    std::filesystem::copy(game_.Path(), game, std::filesystem::copy_options::recursive);
    const auto verify = [this, &game] {
        options_.verifyDir = game;
        return Run([this] { return RunVerifyAction(options_); });
    };
    ASSERT_EQ(verify(), 0) << output_;
    for (const Failing& failing : kFailures) {
        const ScopedFault fault(failing.call, 0, failing.reach, ENOMEM);
        EXPECT_EQ(verify(), 7);
        EXPECT_EQ(output_, kMessage);
    }
}

TEST_P(ConverterFaults, ListShowsNoErrorText) {
    ASSERT_EQ(Generate(), 0) << output_;
    ASSERT_EQ(List(), 0) << output_;
    for (const Failing& failing : kFailures) {
        const std::size_t struck = FailEveryCall(
            failing, [this] { return List(); },
            [&](std::size_t /*number*/, int code) {
                EXPECT_EQ(code, 7);
                EXPECT_TRUE(output_.ends_with(kMessage));
                EXPECT_EQ(Printed(kMessage), 1U);
                EXPECT_EQ(Printed("ERROR"), 0U);
            });
        EXPECT_GT(struck, 2U) << failing.name;
    }
}

TEST_P(ConverterFaults, GameOfAsciiNamesNeedsNoConverter) {
    std::filesystem::remove_all(game_ / "\u65e5\u672c");
    std::filesystem::remove(game_ / "g\u00e9.dat");
    WriteGame("a.dat", "sub/b.dat");
    ASSERT_EQ(Generate(), 0) << output_;
    const std::string sound = ReadFile(Output("base.bin"));
    const std::string soundOutput = output_;
    RemoveOutputs();
    const ScopedFault fault(Call::IconvOpen);
    EXPECT_EQ(Generate(), 0) << output_;
    EXPECT_EQ(output_, soundOutput);
    EXPECT_TRUE(fault.Struck());
    EXPECT_EQ(ReadFile(Output("base.bin")), sound);
    EXPECT_EQ(Verify(), 0) << output_;
    EXPECT_EQ(List(), 0) << output_;
}

}  // namespace
}  // namespace sealkeeper
