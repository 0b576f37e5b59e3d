#include "app/generate_paths.h"

#include <gtest/gtest.h>

#include <string>

namespace sealkeeper {
namespace {

struct PathCase {
    std::string outputName;
    std::string gameDirectory;
    bool isMain;
    std::string catalogue;
    std::string certificateCopy;
};

class GeneratePathsOf : public testing::TestWithParam<PathCase> {};

TEST_P(GeneratePathsOf, FollowTheOutputName) {
    CommandLineOptions options;
    options.outputName = GetParam().outputName;
    options.targetGameDir = GetParam().gameDirectory;
    const GeneratePaths paths = MakeGeneratePaths(options);
    EXPECT_EQ(paths.isMainCatalogue, GetParam().isMain);
    EXPECT_EQ(paths.CataloguePath(), GetParam().catalogue);
    EXPECT_EQ(paths.CertificateCopyPath(), GetParam().certificateCopy);
}

INSTANTIATE_TEST_SUITE_P(
    Names, GeneratePathsOf,
    testing::Values(PathCase{"base", "game", true, "game/Quorvane/Certificates/base.bin",
                             "game/Quorvane/Certificates/base.cer"},
                    PathCase{"BaSe", "../game/", true, "../game/Quorvane/Certificates/BaSe.bin",
                             "../game/Quorvane/Certificates/BaSe.cer"},
                    PathCase{"base", "game\\", true, "game\\Quorvane/Certificates/base.bin",
                             "game\\Quorvane/Certificates/base.cer"},
                    PathCase{"mod1", "game", false, "mod1.bin", "mod1.cer"},
                    PathCase{"base1", "game", false, "base1.bin", "base1.cer"},
                    PathCase{"", "game", false, ".bin", ".cer"}));

}  // namespace
}  // namespace sealkeeper
