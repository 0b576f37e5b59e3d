#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <vector>

#include "config/file_collector.h"
#include "fault/fault_injection.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;
using Reach = ScopedFault::Reach;

// A collector with include patterns, in a game of two files.
class FileCollectorFaults : public testing::Test {
  protected:
    FileCollectorFaults() {
        game_.WriteFile("a.dat", "hello");
        game_.WriteFile("b.dat", "hello");
        ConfigDocument document;
        EXPECT_TRUE(document.ParseConfigText("s { include_paths = [\"*.dat\"] }\n"));
        std::string name = "s";
        EXPECT_EQ(collector_.ApplyCatalogueRules(document.GetSection(name)), ResultCode::Ok);
    }

    TempDirectory game_;
    ScopedCurrentDirectory inGame_{game_.Path()};
    FileCollector collector_{"/the/game/"};
};

TEST_F(FileCollectorFaults, IncludedPathsThatTheSystemFailsToExpand) {
    CapturedOutput output;
    const ScopedFault fault(Call::Opendir, 0, Reach::Once, EIO);
    EXPECT_EQ(collector_.ResolvePaths(), ResultCode::SealkeeperIOError);
    EXPECT_EQ(output.Take(),
              "[Err!] Could not read the directory '.': Input/output error.\n"
              "[Warn] Failed to glob path './*.dat' (Error -2).\n");
}

// Leaving the file out would leave it unsealed.
TEST_F(FileCollectorFaults, IncludedFileThatTheSystemFailsToLookAt) {
    CapturedOutput resolving;
    ASSERT_EQ(collector_.ResolvePaths(), ResultCode::Ok) << resolving.Take();
    for (const std::size_t look : {0U, 1U}) {
        std::vector<FoundFile> files;
        CapturedOutput output;
        const ScopedFault fault(Call::StatFailure, look, Reach::Once, EIO);
        EXPECT_EQ(collector_.CollectFiles(kWholeDirectory, kEveryFilePattern, files),
                  ResultCode::SealkeeperIOError);
        EXPECT_EQ(files.size(), look);
        const std::string text = output.Take();
        EXPECT_TRUE(text == "[Err!] Could not look at './a.dat': Input/output error.\n" ||
                    text == "[Err!] Could not look at './b.dat': Input/output error.\n")
            << text;
    }
}

}  // namespace
}  // namespace sealkeeper
