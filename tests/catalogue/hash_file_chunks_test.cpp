#include "catalogue/catalogue_entry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "platform/text_encoding.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::DigestTexts;
using test::kDigestOfHello;
using test::PatternText;
using test::ScopedCurrentDirectory;
using test::TempDirectory;
using test::WithoutProgressDots;

struct HashingOutcome {
    ResultCode code;
    std::string output;
    std::vector<std::string> digests;
};

HashingOutcome Hashed(const std::wstring& path, std::uint64_t sizeBytes) {
    // The stale digest must be replaced.
    std::vector<Sha256Digest> digests(1);
    CapturedOutput output;
    const ResultCode code = HashFileChunks(path, sizeBytes, digests);
    return {code, WithoutProgressDots(output.Take()), DigestTexts(digests)};
}

struct SizeCase {
    std::size_t sizeBytes;
    std::vector<std::string> digests;
};

// The digests come from Python's hashlib, over the same byte pattern.
const std::vector<SizeCase>& SizeCases() {
    static const std::string wholeFirstChunk =
        "a117210941a0b00dcb2d8577e680d84b6fa0eaf760d2afc654c953b9859d54fa";
    static const std::vector<SizeCase> cases = {
        {1, {"6e340b9cffb37a989ca544e6bb780a2c78901d3fb33738768511a30617afa01d"}},
        {4194303, {"8bc25f24c0f447466930cda6b0ac7405adc7f6348c50204caa9f9a5b6217ed42"}},
        {4194304, {wholeFirstChunk}},
        {4194305,
         {wholeFirstChunk, "74cd9ef9c7e15f57bdad73c511462ca65cb674c46c49639c60f1b44650fa1dcb"}},
        {8388609,
         {wholeFirstChunk, "9889e2ef8bd7d8fea5ef99243b7784ecd8deaf613bdb7a6c0b3ac56f23078303",
          "26e5bfe4b0686167e3e4e0aac40cbae03515171d375f91ea563c9c044e9c5cc7"}},
    };
    return cases;
}

TEST(FileHashing, OneDigestForEachChunk) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    for (const SizeCase& sized : SizeCases()) {
        directory.WriteFile("f", PatternText(sized.sizeBytes));
        const HashingOutcome outcome = Hashed(L"./f", sized.sizeBytes);
        EXPECT_EQ(outcome.code, ResultCode::Ok) << sized.sizeBytes;
        EXPECT_EQ(outcome.digests, sized.digests) << sized.sizeBytes;
        EXPECT_EQ(outcome.output, "[Info] Hashing ./f...\n") << sized.sizeBytes;
    }
}

TEST(FileHashing, FileThatGrewIsHashedUpToItsOldSize) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("f", "hello and more");
    const HashingOutcome outcome = Hashed(L"f", 5);
    EXPECT_EQ(outcome.code, ResultCode::Ok);
    EXPECT_EQ(outcome.digests, std::vector<std::string>{kDigestOfHello});
}

TEST(FileHashing, FileThatShrankFailsAndLeavesItsLineOpen) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("f", "hello");
    const HashingOutcome outcome = Hashed(L"f", 6);
    EXPECT_EQ(outcome.code, ResultCode::CatalogueIOError);
    EXPECT_EQ(outcome.output, "[Info] Hashing f...");
}

TEST(FileHashing, FileThatShrankByItsSecondChunkFails) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("f", PatternText(4194304));
    EXPECT_EQ(Hashed(L"f", 4194305).code, ResultCode::CatalogueIOError);
}

TEST(FileHashing, MissingFileFailsWithoutAMessageOfItsOwn) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    const HashingOutcome outcome = Hashed(L"missing", 5);
    EXPECT_EQ(outcome.code, ResultCode::CatalogueError);
    EXPECT_EQ(outcome.output, "[Info] Hashing missing...");
    EXPECT_TRUE(outcome.digests.empty());
}

TEST(FileHashing, DirectoryCannotBeRead) {
    const TempDirectory directory;
    const HashingOutcome outcome = Hashed(Utf8ToWide(directory.Path()), 1);
    EXPECT_EQ(outcome.code, ResultCode::CatalogueIOError);
    EXPECT_EQ(outcome.output, "[Info] Hashing " + directory.Path() + "...");
}

TEST(FileHashing, RefusesAnEmptyPathAndNoBytesInSilence) {
    const TempDirectory directory;
    const HashingOutcome noPath = Hashed(L"", 5);
    EXPECT_EQ(noPath.code, ResultCode::FileVerificationIOError);
    EXPECT_EQ(noPath.output, "");
    const HashingOutcome noBytes = Hashed(Utf8ToWide(directory.WriteFile("f", "x")), 0);
    EXPECT_EQ(noBytes.code, ResultCode::FileVerificationIOError);
    EXPECT_EQ(noBytes.output, "");
}

}  // namespace
}  // namespace sealkeeper
