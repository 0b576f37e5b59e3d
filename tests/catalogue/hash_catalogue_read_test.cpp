#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/hash_catalogue.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "catalogue/signed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::Bytes;
using test::CapturedOutput;
using test::CatalogueOf;
using test::CertificateBytes;
using test::kTestProductId;
using test::RecordOfFile;
using test::SignedImage;
using test::SignImage;
using test::SmallImage;

class HashCatalogueRead : public test::SignedCatalogueTest {};

TEST_F(HashCatalogueRead, GivesAllThatTheFileHolds) {
    EXPECT_EQ(ReadImage(SignedImage()), ResultCode::Ok);
    ASSERT_EQ(contents_.entries.size(), 1U);
    EXPECT_EQ(contents_.entries[0]->Path(), L"a");
    EXPECT_EQ(contents_.entries[0]->FileSizeBytes(), 5U);
    EXPECT_EQ(test::Hex(contents_.entries[0]->Digest(0)), test::kDigestOfHello);
    EXPECT_EQ(contents_.crlBlock, (Bytes{1, 2, 3}));
    EXPECT_EQ(contents_.certificateBytes, CertificateBytes("good"));
}

TEST_F(HashCatalogueRead, ReadsWhatTheWriterWrites) {
    directory_.WriteFile("d/a", "hello");
    PrivateKey key;
    test::LoadKey("good", key);
    HashCatalogue catalogue(kTestProductId);
    {
        CapturedOutput output;
        ASSERT_EQ(catalogue.CreateCatalogue(key.Get(), {5, 6}, {{L"./d/a", {}}, {L"./b", {}}},
                                            L"base.bin", {}),
                  ResultCode::Ok);
    }
    EXPECT_EQ(Read(), ResultCode::Ok);
    ASSERT_EQ(contents_.entries.size(), 2U);
    EXPECT_EQ(contents_.entries[0]->Path(), L"b");
    EXPECT_EQ(contents_.entries[0]->DigestCount(), 0U);
    EXPECT_EQ(contents_.entries[1]->Path(), L"d/a");
    EXPECT_EQ(contents_.entries[1]->NamePosition(), 2U);
    EXPECT_EQ(contents_.crlBlock, (Bytes{5, 6}));
}

TEST_F(HashCatalogueRead, EarlierContentsGo) {
    EXPECT_EQ(ReadImage(SignedImage()), ResultCode::Ok);
    EXPECT_EQ(Read(), ResultCode::Ok);
    EXPECT_EQ(contents_.entries.size(), 1U);
    EXPECT_EQ(contents_.crlBlock.size(), 3U);
}

TEST_F(HashCatalogueRead, EntriesOutliveTheCatalogue) {
    Write(SignedImage());
    std::shared_ptr<const StoredEntry> entry;
    {
        auto catalogue = std::make_unique<HashCatalogue>(kTestProductId);
        CatalogueContents contents;
        ASSERT_EQ(catalogue->ReadAndVerifyCatalogue(L"base.bin", {}, {}, contents), ResultCode::Ok);
        entry = contents.entries[0];
    }
    EXPECT_EQ(entry->Path(), L"a");
    directory_.WriteFile("a", "hello");
    EXPECT_EQ(entry->VerifyCatalogueFile(L"a", nullptr, nullptr), ResultCode::Ok);
}

TEST_F(HashCatalogueRead, LongerKey) {
    WriteCertificate("big-key");
    const Bytes image = SignedImage("big-key");
    EXPECT_EQ(image[1033], 2);
    EXPECT_EQ(ReadImage(image), ResultCode::Ok);
    EXPECT_EQ(ReadImage(SignedImage("good")), ResultCode::MbedTlsGenericError);
}

struct CertificateCase {
    const char* kind;
    ResultCode code;
};

TEST_F(HashCatalogueRead, CertificateMustBeGood) {
    const std::vector<CertificateCase> cases = {
        {"good", ResultCode::Ok},
        {"other-key", ResultCode::MbedTlsGenericError},
        {"other-name", ResultCode::CertificateCNMismatch},
        {"revoked", ResultCode::CertificateRevoked},
        {"expired", ResultCode::CertificateExpired},
        {"expired-revoked", ResultCode::CertificateExpired},
        {"foreign", ResultCode::MbedTlsX509VerifyFailed},
    };
    Write(SignedImage());
    for (const CertificateCase& used : cases) {
        WriteCertificate(used.kind);
        EXPECT_EQ(Read(), used.code) << used.kind;
        // The signer's own key makes no difference.
        if (used.code != ResultCode::Ok && std::string(used.kind) != "other-key") {
            Write(SignedImage(used.kind));
            EXPECT_EQ(Read(), used.code) << used.kind;
            Write(SignedImage());
        }
    }
}

TEST_F(HashCatalogueRead, CertificateThatCannotBeParsed) {
    Write(SignedImage());
    for (const char* name : {"pem.cer", "truncated.cer", "empty.cer"}) {
        directory_.WriteFile("base.cer", test::ReadFile(test::CredentialPath("damaged", name)));
        EXPECT_EQ(Read(), ResultCode::MbedTlsX509FormatError) << name;
    }
}

TEST_F(HashCatalogueRead, CertificateThatCannotBeRead) {
    Write(SignedImage());
    fs::remove("base.cer");
    EXPECT_EQ(Read(), ResultCode::CertIOError);
    fs::create_directory("base.cer");
    EXPECT_EQ(Read(), ResultCode::CertIOError);
}

TEST_F(HashCatalogueRead, FailuresInTheirOrder) {
    fs::remove("base.cer");
    EXPECT_EQ(Read(), ResultCode::CatalogueIOError);
    Bytes invalid = SignedImage();
    invalid[4] = 5;
    EXPECT_EQ(ReadImage(invalid), ResultCode::FileInvalid);
    Bytes unsignedImage = SmallImage();
    EXPECT_EQ(ReadImage(unsignedImage), ResultCode::CertIOError);
    WriteCertificate("other-name");
    EXPECT_EQ(Read(), ResultCode::CertificateCNMismatch);
    WriteCertificate("good");
    EXPECT_EQ(Read(), ResultCode::MbedTlsGenericError);
    // A block that no reader can decompress.
    Bytes block = test::CatalogueOfCompressed(test::PackedCodes({256}), 1);
    EXPECT_EQ(ReadImage(block), ResultCode::MbedTlsGenericError);
    SignImage(block, "good");
    EXPECT_EQ(ReadImage(block), ResultCode::FileInvalid);
    Bytes counted = CatalogueOf(RecordOfFile(u"a", "hello"), 2);
    SignImage(counted, "good");
    EXPECT_EQ(ReadImage(counted), ResultCode::FileInvalid);
}

// Accepts no certificate, and counts how many it was asked about.
class RefusingCatalogue : public HashCatalogue {
  public:
    RefusingCatalogue() : HashCatalogue(kTestProductId) {}
    ResultCode VerifySigningCertificate(ByteView /*certificate*/, ByteView /*parent*/,
                                        ByteView /*parentCrl*/, Certificate& /*parsed*/) override {
        ++calls_;
        return ResultCode::Aborted;
    }
    [[nodiscard]] int Calls() const { return calls_; }

  private:
    int calls_ = 0;
};

TEST_F(HashCatalogueRead, SignatureIsCheckedAfterTheHeader) {
    RefusingCatalogue catalogue;
    // The header is checked first.
    Bytes longer = SmallImage();
    longer.push_back(0);
    Write(longer);
    EXPECT_EQ(catalogue.ReadAndVerifyCatalogue(L"base.bin", {}, {}, contents_),
              ResultCode::FileInvalid);
    EXPECT_EQ(catalogue.Calls(), 0);
    // The blocks are checked later.
    Write(test::CatalogueOfCompressed(test::PackedCodes({256}), 1, {1, 2}));
    EXPECT_EQ(catalogue.ReadAndVerifyCatalogue(L"base.bin", {}, {}, contents_),
              ResultCode::Aborted);
    EXPECT_EQ(catalogue.Calls(), 1);
}

TEST_F(HashCatalogueRead, HeaderAloneMayBeSigned) {
    Bytes image = test::CatalogueOfCompressed({}, 0);
    SignImage(image, "good");
    EXPECT_EQ(ReadImage(image), ResultCode::Ok);
    EXPECT_TRUE(contents_.entries.empty());
}

TEST_F(HashCatalogueRead, PathWithoutADotHasNoCertificate) {
    Write(SignedImage(), "base");
    EXPECT_EQ(Read(L""), ResultCode::CatalogueError);
    EXPECT_EQ(Read(L"base"), ResultCode::CatalogueError);
    EXPECT_EQ(Read(L"missing"), ResultCode::CatalogueError);
}

TEST_F(HashCatalogueRead, CertificateIsNamedByTheLastDot) {
    Write(SignedImage(), "a.b.bin");
    fs::rename("base.cer", "a.b.cer");
    EXPECT_EQ(Read(L"a.b.bin"), ResultCode::Ok);
    Write(SignedImage(), "\xC3\xA4.bin");
    EXPECT_EQ(Read(L"\u00E4.bin"), ResultCode::CertIOError);
    fs::rename("a.b.cer", "\xC3\xA4.cer");
    EXPECT_EQ(Read(L"\u00E4.bin"), ResultCode::Ok);
    // The dot may also belong to a directory.
    Write(SignedImage(), "dir.d/base");
    EXPECT_EQ(Read(L"dir.d/base"), ResultCode::CertIOError);
    fs::rename("\xC3\xA4.cer", "dir.cer");
    EXPECT_EQ(Read(L"dir.d/base"), ResultCode::Ok);
}

TEST_F(HashCatalogueRead, CatalogueThatCannotBeRead) {
    EXPECT_EQ(Read(), ResultCode::CatalogueIOError);
    fs::create_directory("base.bin");
    EXPECT_EQ(Read(), ResultCode::CatalogueIOError);
    ASSERT_EQ(mkfifo("fifo.bin", 0600), 0);
    EXPECT_EQ(Read(L"fifo.bin"), ResultCode::CatalogueIOError);
}

TEST_F(HashCatalogueRead, ModNeedsItsParent) {
    Write(SignedImage("mod"), "mod1.bin");
    WriteCertificate("mod", "mod1.cer");
    EXPECT_EQ(Read(L"mod1.bin"), ResultCode::MbedTlsX509VerifyFailed);
    EXPECT_EQ(Read(L"mod1.bin", CertificateBytes("good")), ResultCode::Ok);
    EXPECT_EQ(contents_.certificateBytes, CertificateBytes("mod"));
    EXPECT_EQ(Read(L"mod1.bin", CertificateBytes("other-name")), ResultCode::CertificateCNMismatch);
    EXPECT_EQ(Read(L"mod1.bin", CertificateBytes("good"), Bytes{0}),
              ResultCode::MbedTlsX509FormatError);
}

// Reads `image` without checking its signature.
ResultCode ReadUnverified(const Bytes& image, EntryList& entries) {
    HashCatalogue catalogue("");
    CapturedOutput output;
    const ResultCode code = catalogue.ReadCatalogue(image, entries);
    EXPECT_EQ(output.Take(), "");
    EntryList listed;
    EXPECT_EQ(catalogue.GetUnverifiedCatalogueFileList(image, listed), code);
    EXPECT_EQ(listed.size(), entries.size());
    return code;
}

TEST(HashCatalogueList, ReadsWithoutASignature) {
    EntryList entries;
    EXPECT_EQ(ReadUnverified(SmallImage(), entries), ResultCode::Ok);
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0]->Path(), L"a");
    Bytes wrong = SignedImage();
    wrong[100] ^= 1U;
    EXPECT_EQ(ReadUnverified(wrong, entries), ResultCode::Ok);
    EXPECT_EQ(entries.size(), 1U);
}

TEST(HashCatalogueList, FailureLeavesNoEntries) {
    EntryList entries;
    EXPECT_EQ(ReadUnverified(SmallImage(), entries), ResultCode::Ok);
    EXPECT_EQ(ReadUnverified(Bytes(1051), entries), ResultCode::FileInvalid);
    EXPECT_TRUE(entries.empty());
    EXPECT_EQ(ReadUnverified({}, entries), ResultCode::FileInvalid);
}

}  // namespace
}  // namespace sealkeeper
