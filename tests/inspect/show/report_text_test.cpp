// The output of `show` and `compare`, from facts that need no file.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "catalogue/parsed_catalogue_support.h"
#include "inspect/report/json.h"
#include "inspect/show/compare_report.h"
#include "inspect/show/show_text.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::RecordOf;
using test::RecordOfFile;

std::string ShownText(const FileToShow& file, const ShowOptions& options = {}) {
    test::CapturedOutput output;
    Console console;
    WriteShowText(file, options, console);
    return output.Take();
}

// A file known only by its name.
FileToShow NamedFile(ShownKind kind) {
    FileToShow file;
    file.shown.path = "dir/file";
    file.shown.sizeBytes = 1234;
    file.shown.kind = kind;
    return file;
}

std::string TextOfSignature(const SignatureFacts& signature) {
    FileToShow file = NamedFile(ShownKind::Catalogue);
    file.shown.signature = signature;
    const std::string text = ShownText(file);
    return text.substr(text.find('\n') + 2);
}

TEST(ShowText, BeginsWithTheKind) {
    EXPECT_EQ(ShownText(NamedFile(ShownKind::Catalogue)),
              "dir/file: valid, hash catalogue, 1,234 bytes\n");
    EXPECT_EQ(ShownText(NamedFile(ShownKind::RuntimeConfiguration)),
              "dir/file: valid, runtime.conf, 1,234 bytes\n");
}

TEST(ShowText, TellsWhatIsNotValid) {
    FileToShow file = NamedFile(ShownKind::Unknown);
    file.shown.invalid = InvalidFinding{"code", 1060, false, {}, "is 9", {"a cause", "another"}};
    EXPECT_EQ(ShownText(file),
              "dir/file: not valid, neither a catalogue nor a runtime.conf, 1,234 bytes\n"
              "\n"
              "Invalid          code, at offset 1060\n"
              "                 is 9\n"
              "Likely           a cause\n"
              "                 another\n");
    file.shown.invalid->isInEntryBlock = true;
    EXPECT_NE(ShownText(file).find("at offset 1060 of the entry block once it is decompressed\n"),
              std::string::npos);
}

TEST(ShowText, AlignsFields) {
    FileToShow file = NamedFile(ShownKind::RuntimeConfiguration);
    file.shown.fields = {{"magic", 0, 4, "51 56", {}},
                         {"length", 1028, 4, std::uint64_t{1'000'000}, "of something"},
                         {"name", 1040, 64, "", {}},
                         {"area", 4, 1024, std::string(65, 'a'), {}},
                         {"longest", 4, 64, std::string(64, 'b'), {}}};
    EXPECT_EQ(ShownText(file),
              "dir/file: valid, runtime.conf, 1,234 bytes\n"
              "\n"
              "  offset   size  field, once the file is unscrambled\n"
              "       0      4  magic    51 56\n"
              "    1028      4  length   1,000,000  (of something)\n"
              "    1040     64  name     none\n"
              "       4   1024  area     aaaaaaaaaaaaaaaa ...\n"
              "       4     64  longest  " +
                  std::string(64, 'b') + "\n");
    file.shown.kind = ShownKind::Catalogue;
    EXPECT_NE(ShownText(file).find("  offset   size  field\n"), std::string::npos);
}

TEST(ShowText, TellsTheStateOfTheSignature) {
    EXPECT_EQ(TextOfSignature({SignatureState::Good, "a.cer", {}, {}}),
              "Signature        good, by 'a.cer'\n");
    EXPECT_EQ(TextOfSignature({SignatureState::Bad, "a.cer", "why", {}}),
              "Signature        bad, by 'a.cer'\n"
              "                 why\n");
    EXPECT_EQ(TextOfSignature({SignatureState::CertificateMissing, "a.cer", "why", {}}),
              "Signature        not checked: 'a.cer' cannot be read: why\n");
    EXPECT_EQ(TextOfSignature({SignatureState::CertificateUnusable, "a.cer", "why", {}}),
              "Signature        not checked: 'a.cer': why\n");
}

TEST(ShowText, TellsWhetherTheCertificateIsTrusted) {
    EXPECT_EQ(TextOfSignature({SignatureState::Good, "a.cer", {}, SignerTrust{"P", true, {}}}),
              "Signature        good, by 'a.cer'\n"
              "Certificate      trusted for product id 'P'\n");
    EXPECT_EQ(TextOfSignature({SignatureState::Good, "a.cer", {}, SignerTrust{"P", false, "why"}}),
              "Signature        good, by 'a.cer'\n"
              "Certificate      not trusted for product id 'P': why\n");
}

TEST(ShowText, TellsOfTheRevocationList) {
    const auto textOf = [](const RevocationFacts& list) {
        FileToShow file = NamedFile(ShownKind::Catalogue);
        file.shown.revocationList = list;
        const std::string text = ShownText(file);
        return text.substr(text.find('\n') + 2);
    };
    EXPECT_EQ(textOf({}), "Revocation list  none\n");
    EXPECT_EQ(textOf({3, false, {}, {}, {}, 0, "no list"}), "Revocation list  3 bytes, no list\n");
    EXPECT_EQ(textOf({300, true, "CN=A", "2020", "2030", 1, {}}),
              "Revocation list  300 bytes, 1 certificate revoked\n"
              "                 by CN=A\n"
              "                 of 2020, until 2030\n");
    EXPECT_TRUE(textOf({300, true, "CN=A", "2020", {}, 2, {}}).ends_with(" of 2020\n"));
}

TEST(ShowText, EndsItsFactsWithNotes) {
    FileToShow file = NamedFile(ShownKind::Catalogue);
    file.shown.totals = EntryTotals{2, 1000, 3, 1, 0, 0};
    file.shown.notes = {"one", "two"};
    EXPECT_EQ(ShownText(file),
              "dir/file: valid, hash catalogue, 1,234 bytes\n"
              "\n"
              "Entries          2 files, 1,000 bytes, 3 chunks, 1 with a remark (!)\n"
              "Note             one\n"
              "Note             two\n");
}

// A valid catalogue of three entries, the second with an oddity.
FileToShow ShownCatalogue() {
    Bytes odd = RecordOf(1'000'000, u"dir/odd", {});
    test::StoreAt<std::uint32_t>(odd, 8, 1);
    FileToShow file = NamedFile(ShownKind::Catalogue);
    file.shown.totals = EntryTotals{3, 1'000'006, 2, 1, 1'000'000, 1};
    file.catalogue.emplace(CatalogueFile{
        test::CatalogueOf(test::Joined({RecordOfFile(u"a", "hello"), odd, RecordOfFile(u"z", "1")}),
                          3),
        {}});
    EXPECT_EQ(ReadCatalogueHeader(file.catalogue->bytes, file.catalogue->bytes.size(),
                                  file.catalogue->header),
              ResultCode::Ok);
    return file;
}

// The part after the facts.
std::string EntriesText(const ShowOptions& options) {
    const std::string text = ShownText(ShownCatalogue(), options);
    const std::size_t begin = text.find("    bytes  chunks  path");
    return begin == std::string::npos ? "" : text.substr(begin);
}

TEST(ShowText, ListsEntriesInColumns) {
    const std::string text = EntriesText({});
    EXPECT_TRUE(
        text.starts_with("    bytes  chunks  path\n"
                         "        5       1  a\n"
                         "1,000,000       0  dir/odd\n"
                         "                   ! "))
        << text;
    EXPECT_TRUE(text.ends_with("        1       1  z\n")) << text;
}

TEST(ShowText, EndsAtTheLimit) {
    ShowOptions options;
    options.limit = 1;
    EXPECT_EQ(EntriesText(options),
              "    bytes  chunks  path\n"
              "        5       1  a\n"
              "and 2 more files\n");
    options.limit = 0;
    EXPECT_EQ(EntriesText(options), "");
    options.limit = 3;
    EXPECT_EQ(EntriesText(options), EntriesText({}));
}

TEST(ShowText, ListsDigestsBelowTheirEntry) {
    ShowOptions options;
    options.hasDigests = true;
    options.limit = 1;
    EXPECT_EQ(EntriesText(options),
              "    bytes  chunks  path\n"
              "        5       1  a\n"
              "                   "
              "2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824\n"
              "and 2 more files\n");
}

ComparedEntry Entry(const std::string& path, std::uint64_t sizeBytes, const Bytes& digests = {}) {
    return {path, StoredPath::Form::Plain, {}, sizeBytes, digests};
}

// The digest of one chunk.
Bytes Chunk(std::uint8_t byte) {
    return Bytes(32, byte);
}

CatalogueDifference SampleDifference() {
    CatalogueDifference difference;
    difference.removed = {Entry("gone", 12)};
    difference.added = {Entry("new", 1000, Chunk(1)), Entry("newer", 1)};
    difference.added[1].form = StoredPath::Form::Aliased;
    difference.changed = {{Entry("grown", 1), Entry("grown", 2, Chunk(1))},
                          {Entry("other", 9, test::Joined({Chunk(1), Chunk(2)})),
                           Entry("other", 9, test::Joined({Chunk(1), Chunk(3)}))}};
    difference.unchanged = 4;
    difference.before = {7, 100};
    difference.after = {8, 1090};
    difference.others = {"signature", "revocation list"};
    return difference;
}

std::string ComparedText(const CatalogueDifference& difference) {
    test::CapturedOutput output;
    Console console;
    WriteCompareText({"old.bin", "new.bin"}, difference, console);
    return output.Take();
}

TEST(CompareText, ListsWhatDiffers) {
    EXPECT_EQ(ComparedText(SampleDifference()),
              "old.bin -> new.bin\n"
              "\n"
              "-    12  gone\n"
              "+ 1,000  new\n"
              "+     1  newer (aliased)\n"
              "~     2  grown  (was 1)\n"
              "~     9  other  (1 of 2 chunks)\n"
              "\n"
              "1 removed (12 bytes), 2 added (1,001 bytes), 2 changed, 4 the same\n"
              "7 files, 100 bytes -> 8 files, 1,090 bytes\n"
              "Also different: revocation list\n");
}

TEST(CompareText, TellsOfTheSignatureWhereNothingElseDiffers) {
    CatalogueDifference difference;
    difference.after = {1, 5};
    EXPECT_EQ(ComparedText(difference),
              "old.bin -> new.bin\n\nThe catalogues are the same: 1 file, 5 bytes\n");
    difference.others = {"signature", "order of entries"};
    EXPECT_EQ(ComparedText(difference),
              "old.bin -> new.bin\n\nThe entries are the same: 1 file, 5 bytes\n"
              "Different: signature and order of entries\n");
}

Json ComparedJson(const CatalogueDifference& difference) {
    test::CapturedOutput output;
    Console console;
    WriteCompareJson({"old.bin", "new.bin"}, difference, console);
    return Json::parse(output.Take());
}

TEST(CompareJson, HasAllThatDiffers) {
    EXPECT_EQ(ComparedJson(SampleDifference()), Json::parse(R"({
        "old": {"file": "old.bin", "files": 7, "bytes": 100},
        "new": {"file": "new.bin", "files": 8, "bytes": 1090},
        "hasSameEntries": false, "unchanged": 4,
        "otherDifferences": ["signature", "revocation list"],
        "removed": [{"path": "gone", "isAliased": false, "bytes": 12, "chunks": 0}],
        "added": [{"path": "new", "isAliased": false, "bytes": 1000, "chunks": 1},
                  {"path": "newer", "isAliased": true, "bytes": 1, "chunks": 0}],
        "changed": [{"path": "grown", "isAliased": false, "bytes": 2, "chunks": 1,
                     "oldBytes": 1, "oldChunks": 0, "differingChunks": 1},
                    {"path": "other", "isAliased": false, "bytes": 9, "chunks": 2,
                     "oldBytes": 9, "oldChunks": 2, "differingChunks": 1}]})"));
}

TEST(CompareJson, HasEmptyListsWhereNothingDiffers) {
    const Json json = ComparedJson({});
    EXPECT_EQ(json["hasSameEntries"], true);
    for (const char* const list : {"otherDifferences", "removed", "added", "changed"}) {
        EXPECT_EQ(json[list], Json::array()) << list;
    }
}

}  // namespace
}  // namespace sealkeeper
