#include "app/list_action.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "catalogue/stored_catalogue_support.h"
#include "support/list_fixture.h"

namespace sealkeeper {
namespace {

using test::Bytes;

class ListActionTest : public test::ListFixture {
  protected:
    ResultCode ListBytes(const Bytes& bytes) {
        return List(directory_.WriteFile("file", test::TextOfBytes(bytes)));
    }
};

// The command line refuses paths that do not resolve, so the action is tested alone.
TEST_F(ListActionTest, FileThatCannotBeRead) {
    for (const std::string& path : {directory_ / "missing", directory_.Path(), std::string()}) {
        EXPECT_EQ(List(path), ResultCode::CatalogueIOError);
        EXPECT_EQ(output_, "[Err!] Could not locate the file on disk: '" + path + "'.\n");
    }
}

TEST_F(ListActionTest, ShortFileFailsInSilence) {
    const Bytes header = test::CatalogueOfCompressed({}, 0);
    for (const std::ptrdiff_t size : {0, 1, 3, 4, 1051}) {
        EXPECT_EQ(ListBytes(Bytes(header.begin(), header.begin() + size)), ResultCode::FileInvalid);
        EXPECT_EQ(output_, "") << size;
    }
}

TEST_F(ListActionTest, CatalogueWithoutEntries) {
    EXPECT_EQ(ListBytes(test::CatalogueOfCompressed({}, 0)), ResultCode::Ok);
    EXPECT_EQ(output_, "[Info] 0 files in catalogue:\n");
}

TEST_F(ListActionTest, PathsInTheirOrder) {
    Bytes raw = test::RecordOfFile(u"z/\u00E4", "hello");
    const Bytes second = test::RecordOfFile(u"a%s\\b", "");
    raw.insert(raw.end(), second.begin(), second.end());
    EXPECT_EQ(ListBytes(test::CatalogueOf(raw, 2)), ResultCode::Ok);
    EXPECT_EQ(output_, "[Info] 2 files in catalogue:\n[Info] z/\xC3\xA4\n[Info] a%s/b\n");
}

TEST_F(ListActionTest, CatalogueThatCannotBeParsedIsAWarning) {
    EXPECT_EQ(ListBytes(test::CatalogueOfCompressed({}, 1)), ResultCode::FileInvalid);
    EXPECT_EQ(output_, "[Warn] GetUnverifiedCatalogueFileList() failed. Code 9 (FileInvalid).\n");
}

TEST_F(ListActionTest, WithoutTheMagicItIsForTheOtherReader) {
    EXPECT_EQ(ListBytes(Bytes(1052)), ResultCode::FileInvalid);
    EXPECT_EQ(output_,
              "[Err!] The provided file was too small to be a configuration file, file size: 1052, "
              "expected: 1108.\n");
    EXPECT_EQ(ListBytes(Bytes(1108)), ResultCode::FileInvalid);
    EXPECT_EQ(output_, "[Err!] Unsupported file format.\n");
    // Every byte of the magic matters.
    for (std::size_t offset = 0; offset < 4; ++offset) {
        Bytes file = test::CatalogueOfCompressed({}, 0);
        file[offset] ^= 0x20U;
        EXPECT_EQ(ListBytes(file), ResultCode::FileInvalid);
        EXPECT_EQ(output_,
                  "[Err!] The provided file was too small to be a configuration file, file size: "
                  "1052, expected: 1108.\n");
    }
}

}  // namespace
}  // namespace sealkeeper
