#include "app/catalogue_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

class CatalogueOutputTest : public testing::Test {
  protected:
    CatalogueOutputTest() : here_(directory_.Path()) {
        test::LoadKey("good", material_.privateKey);
        directory_.WriteFile("a", "hello");
    }

    ResultCode CreateAs(const std::string& name) {
        GeneratePaths paths;
        paths.catalogueName = name;
        HashCatalogue catalogue("product");
        CapturedOutput output;
        const ResultCode code =
            CreateCatalogueFile(paths, material_, catalogue, {{L"./a", {}}}, {});
        output_ = output.Take();
        return code;
    }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    SigningMaterial material_;
    std::string output_;
};

TEST_F(CatalogueOutputTest, NamesMayBeAnyText) {
    for (const char* name : {"mod1.bin", "\u65e5\u672c.bin"}) {
        EXPECT_EQ(CreateAs(name), ResultCode::Ok) << output_;
        EXPECT_TRUE(std::filesystem::exists(name));
    }
}

// There may be another file named like the error text.
TEST_F(CatalogueOutputTest, WhatIsNoTextNamesNoFile) {
    EXPECT_EQ(CreateAs("m\xFF.bin"), ResultCode::CatalogueIOError);
    EXPECT_EQ(output_, "[Err!] Failed to open file: 'm\xFF.bin'.\n");
    EXPECT_FALSE(std::filesystem::exists("U82W_ERROR"));
}

}  // namespace
}  // namespace sealkeeper
