#include "app/catalogue_builder.h"

#include <gtest/gtest.h>

#include <string>

#include "runtime/signing_material.h"
#include "support/captured_output.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

// A whole run refuses such a certificate before it comes here, so the builder is asked alone.
TEST(CatalogueBuilder, WritesNoRuntimeConfigurationForAModCertificate) {
    const TempDirectory game;
    const ScopedCurrentDirectory restored(game.Path());
    game.WriteFile("a.dat", "a");
    CommandLineOptions options;
    options.productId = test::kTestProductId;
    options.programPath = "sealkeeper";
    options.configFile = game.WriteFile(
        "game.cfg",
        "config_info { version = 2; }\nsearch_options { include_paths = [\"a.dat\"] }\n");
    CapturedOutput output;
    ASSERT_EQ(LoadSigningMaterial({test::PrivateKeyPath("mod"), test::CertificatePath("mod"), ""},
                                  options.productId, TrustCheck::Skipped, options.signingMaterial),
              ResultCode::Ok);
    const GeneratePaths paths = MakeGeneratePaths(options);
    HashCatalogue catalogue(options.productId);
    CatalogueBuilder builder(options, paths, game.Path() + "/", catalogue);
    EXPECT_EQ(builder.Prepare(), ResultCode::Ok);
    EXPECT_EQ(
        output.Take(),
        "[Info] Using config version: 2.\n"
        "[Info] The following matched certain files in the target directory: './a.dat'.\n"
        "[Err!] Failed to verify the certificate for product ID: TestProduct42\n"
        "[Info] Will not generate a configuration file as the provided certificate is for a mod.\n");
}

}  // namespace
}  // namespace sealkeeper
