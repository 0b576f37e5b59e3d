#include "catalogue/hash_catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "platform/text_encoding.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/found_files.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::CertificateBytes;
using test::kTestProductId;
using test::LoadKey;
using test::ReadFile;
using test::ScopedCurrentDirectory;
using test::TempDirectory;
using test::WithoutProgressDots;

// Makes catalogues in a fresh current directory.
class HashCatalogueTest : public testing::Test {
  protected:
    HashCatalogueTest() : here_(directory_.Path()) { LoadKey("good", key_); }

    ResultCode Create(const std::vector<std::wstring>& files, const AliasMap& aliases = {}) {
        HashCatalogue catalogue(kTestProductId);
        CapturedOutput output;
        const ResultCode code =
            catalogue.CreateCatalogue(key_.Get(), crl_, test::Unseen(files), L"base.bin", aliases);
        output_ = WithoutProgressDots(output.Take());
        return code;
    }

    [[nodiscard]] static bool IsWritten() { return std::filesystem::exists("base.bin"); }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    PrivateKey key_;
    std::vector<std::uint8_t> crl_;
    std::string output_;
};

TEST_F(HashCatalogueTest, WritesTheSignedFile) {
    directory_.WriteFile("bin/a.dat", "hello");
    crl_.assign(1000, 0x5A);
    EXPECT_EQ(Create({L"./bin/a.dat"}), ResultCode::Ok);
    EXPECT_EQ(output_, "[Info] Hashing ./bin/a.dat...\n");
    const std::string written = ReadFile("base.bin");
    ASSERT_EQ(written.size(), 2184U);
    EXPECT_EQ(written.substr(1052, 1000), std::string(1000, 0x5A));
    std::vector<std::uint8_t> image = test::BytesOf(written);
    const std::vector<std::uint8_t> signature(image.begin() + 8, image.begin() + 8 + 256);
    std::fill(image.begin() + 8, image.begin() + 1036, std::uint8_t{0});
    EXPECT_EQ(test::VerifySignature("good", image, signature), 0);
}

TEST_F(HashCatalogueTest, EmptyListFailsInSilence) {
    EXPECT_EQ(Create({}), ResultCode::CatalogueError);
    EXPECT_EQ(output_, "");
    EXPECT_FALSE(IsWritten());
}

// Messages about missing files reveal the order.
std::string EmptyFileMessages(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += "[Warn] [Warning] Empty file: '" + name + "'.\n";
    }
    return text;
}

struct OrderCase {
    const char* name;
    std::vector<std::wstring> files;
    std::vector<std::string> order;
};

TEST_F(HashCatalogueTest, SortsTheCollectedPathsByCodePoint) {
    const std::vector<OrderCase> cases = {
        {"upper case before lower case", {L"a", L"Z"}, {"Z", "a"}},
        {"shorter first", {L"ab", L"a"}, {"a", "ab"}},
        {"separators count", {L"a0", L"a/b", L"a.b"}, {"a.b", "a/b", "a0"}},
        // In UTF-16, surrogates sort before U+FFFD, so the order would be reversed.
        {"code points and not units",
         {L"\U00010000", L"\uFFFD"},
         {"\xEF\xBF\xBD", "\xF0\x90\x80\x80"}},
        {"before ./ goes", {L"A", L"./z"}, {"./z", "A"}},
        {"nothing is taken out", {L"a", L"./a", L"a"}, {"./a", "a", "a"}},
    };
    for (const OrderCase& order : cases) {
        EXPECT_EQ(Create(order.files), ResultCode::Ok) << order.name;
        EXPECT_EQ(output_, EmptyFileMessages(order.order)) << order.name;
    }
}

TEST_F(HashCatalogueTest, SortsBeforeBackslashesAreStoredAsSlashes) {
    EXPECT_EQ(Create({L"a\\b", L"aZ"}), ResultCode::Ok);
    // The console prints each backslash as a slash.
    EXPECT_EQ(output_, EmptyFileMessages({"aZ", "a/b"}));
}

TEST_F(HashCatalogueTest, SortsBeforeAliasesAreApplied) {
    EXPECT_EQ(Create({L"b", L"a"}, {{L"a", L"z"}}), ResultCode::Ok);
    EXPECT_EQ(output_, EmptyFileMessages({"a", "b"}));
}

TEST_F(HashCatalogueTest, FailureOfOneFileWritesNothing) {
    EXPECT_EQ(Create({L"a", std::wstring(256, L'b')}), ResultCode::CatalogueError);
    EXPECT_EQ(output_, EmptyFileMessages({"a"}) + "[Err!] Path too long for the catalogue: '" +
                           std::string(256, 'b') + "'.\n");
    EXPECT_FALSE(IsWritten());
}

TEST_F(HashCatalogueTest, AliasThatDoesNotFitWritesNothing) {
    EXPECT_EQ(Create({L"a"}, {{L"a", std::wstring(128, L'b')}}), ResultCode::CatalogueError);
    EXPECT_FALSE(IsWritten());
}

TEST_F(HashCatalogueTest, SigningFailureWritesNothing) {
    HashCatalogue catalogue(kTestProductId);
    EXPECT_EQ(catalogue.CreateCatalogue(nullptr, {}, {{L"a", {}}}, L"base.bin", {}),
              ResultCode::MbedTlsRandNumGenError);
    EXPECT_FALSE(IsWritten());
}

TEST_F(HashCatalogueTest, WriteFailureIsReported) {
    std::filesystem::create_directory("base.bin");
    EXPECT_EQ(Create({L"a"}), ResultCode::CatalogueIOError);
    EXPECT_EQ(output_, EmptyFileMessages({"a"}) + "[Err!] Failed to open file: 'base.bin'.\n");
}

TEST_F(HashCatalogueTest, ChecksCertificatesForItsProductId) {
    Certificate certificate;
    HashCatalogue matching(kTestProductId);
    EXPECT_EQ(matching.VerifySigningCertificate(CertificateBytes("good"), {}, {}, certificate),
              ResultCode::Ok);
    HashCatalogue other("AnotherProduct");
    EXPECT_EQ(other.VerifySigningCertificate(CertificateBytes("good"), {}, {}, certificate),
              ResultCode::CertificateCNMismatch);
    EXPECT_EQ(matching.VerifySigningCertificate(CertificateBytes("mod"), CertificateBytes("good"),
                                                {}, certificate),
              ResultCode::Ok);
}

}  // namespace
}  // namespace sealkeeper
