// The facts that are gathered about a file of either kind.
#include "inspect/show/read_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "catalogue/signed_catalogue_support.h"
#include "runtime/runtime_configuration_writer.h"
#include "runtime/scramble.h"
#include "support/quiet_log.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using Texts = std::vector<std::string>;

// Files in a directory with a certificate "base.cer".
class ReadingFiles : public testing::Test {
  protected:
    ReadingFiles() {
        directory_.WriteFile("base.cer", test::TextOfBytes(test::CertificateBytes("good")));
    }

    [[nodiscard]] FileToShow ReadBytes(const Bytes& bytes, const std::string& name = "base.bin",
                                       const std::optional<std::string>& productId = {}) const {
        const std::string path = directory_.WriteFile(name, test::TextOfBytes(bytes));
        std::string failure;
        auto read = ReadFileToShow(path, productId, failure);
        EXPECT_TRUE(read.has_value()) << failure;
        return read ? std::move(*read) : FileToShow();
    }

    // Why `path` could not be read.
    [[nodiscard]] static std::string FailureOf(const std::string& path) {
        std::string failure;
        EXPECT_EQ(ReadFileToShow(path, {}, failure), std::nullopt);
        return failure;
    }

    const test::QuietLog quiet_;
    test::TempDirectory directory_;
};

TEST_F(ReadingFiles, ACatalogue) {
    const FileToShow read = ReadBytes(test::SignedImage());
    EXPECT_EQ(read.shown.kind, ShownKind::Catalogue);
    EXPECT_EQ(read.shown.path, directory_ / "base.bin");
    EXPECT_EQ(read.shown.sizeBytes, test::SignedImage().size());
    EXPECT_FALSE(read.shown.invalid.has_value());
    EXPECT_FALSE(read.shown.fields.empty());
    ASSERT_TRUE(read.shown.signature.has_value());
    EXPECT_EQ(read.shown.signature->state, SignatureState::Good);
    EXPECT_FALSE(read.shown.signature->trust.has_value()) << "nobody asked for it";
    ASSERT_TRUE(read.shown.totals.has_value());
    EXPECT_EQ(read.shown.totals->entries, 1U);
    EXPECT_EQ(read.shown.totals->fileBytes, 5U);
    ASSERT_TRUE(read.shown.revocationList.has_value());
    EXPECT_EQ(read.shown.revocationList->lengthBytes, 3U);
    EXPECT_TRUE(read.catalogue.has_value());
}

TEST_F(ReadingFiles, ACatalogueForAProduct) {
    for (const auto& [product, isTrusted] :
         {std::pair(test::kTestProductId, true), std::pair("Another", false)}) {
        const FileToShow read = ReadBytes(test::SignedImage(), "base.bin", product);
        ASSERT_TRUE(read.shown.signature && read.shown.signature->trust);
        EXPECT_EQ(read.shown.signature->trust->isTrusted, isTrusted) << product;
    }
}

TEST_F(ReadingFiles, ACatalogueThatIsNotValid) {
    Bytes cut = test::SignedImage();
    cut.pop_back();
    const FileToShow read = ReadBytes(cut);
    EXPECT_EQ(read.shown.kind, ShownKind::Catalogue);
    ASSERT_TRUE(read.shown.invalid.has_value());
    EXPECT_EQ(read.shown.invalid->field, "compressed_length");
    EXPECT_FALSE(read.shown.fields.empty()) << "those that are there";
    EXPECT_FALSE(read.catalogue.has_value());
}

TEST_F(ReadingFiles, EntriesThatAreNotValid) {
    const FileToShow read = ReadBytes(test::CatalogueOf(test::RecordOfFile(u"a", "hello"), 2));
    ASSERT_TRUE(read.shown.invalid.has_value());
    EXPECT_EQ(read.shown.invalid->field, "entry_count");
    EXPECT_FALSE(read.catalogue.has_value());
}

TEST_F(ReadingFiles, NeitherOfTheTwo) {
    for (const std::size_t size : {0U, 1051U, 1052U, 1107U, 1108U, 5000U}) {
        const FileToShow read = ReadBytes(Bytes(size, 'x'));
        EXPECT_EQ(read.shown.kind, ShownKind::Unknown) << size;
        ASSERT_TRUE(read.shown.invalid.has_value()) << size;
        EXPECT_EQ(read.shown.invalid->field, size < 1108 ? "file length" : "magic") << size;
    }
}

TEST_F(ReadingFiles, FilesThatCannotBeRead) {
    EXPECT_EQ(FailureOf(directory_ / "missing"), "cannot be read: No such file or directory");
    EXPECT_EQ(FailureOf(directory_.Path()), "cannot be read: it is a directory");
}

// A runtime.conf before scrambling, with a good signature.
class ReadingSettings : public ReadingFiles {
  protected:
    ReadingSettings() {
        PrivateKey key;
        test::LoadKey("good", key);
        RuntimeConfiguration configuration;
        configuration.version = 1;
        configuration.maxActiveInstances = 258;
        configuration.crashReporterName = {'c', 'r', 'a', 's', 'h'};
        configuration.antiTamperSolution = 1;
        EXPECT_EQ(WriteRuntimeConfiguration(configuration, key.Get(), directory_ / ""),
                  ResultCode::Ok);
        plain_ = test::FileBytes(directory_ / "runtime.conf");
        Unscramble(plain_);
    }

    [[nodiscard]] FileToShow ReadPlain(Bytes plain) const {
        Scramble(plain);
        return ReadBytes(plain, "runtime.conf");
    }

    // As above, with `number` stored at `offset`.
    [[nodiscard]] FileToShow ReadWith(std::size_t offset, std::uint32_t number) const {
        Bytes plain = plain_;
        test::StoreAt(plain, offset, number);
        return ReadPlain(plain);
    }

    Bytes plain_;
};

// "offset+size name = value (meaning)" for each field.
Texts LinesOf(const std::vector<ShownField>& fields) {
    Texts lines;
    for (const ShownField& field : fields) {
        const auto* const number = std::get_if<std::uint64_t>(&field.value);
        std::string value = number != nullptr ? std::to_string(*number)
                                              : std::get<std::string>(field.value).substr(0, 11);
        lines.push_back(std::to_string(field.offset) + "+" + std::to_string(field.sizeBytes) + " " +
                        field.name + " = " + value +
                        (field.meaning.empty() ? "" : " (" + field.meaning + ")"));
    }
    return lines;
}

TEST_F(ReadingSettings, HasTheirFields) {
    const FileToShow read = ReadPlain(plain_);
    EXPECT_EQ(read.shown.kind, ShownKind::RuntimeConfiguration);
    EXPECT_FALSE(read.shown.invalid.has_value());
    EXPECT_EQ(read.shown.notes, Texts{});
    Texts lines = LinesOf(read.shown.fields);
    ASSERT_EQ(lines.size(), 7U);
    lines.erase(lines.begin() + 1);
    EXPECT_EQ(
        lines,
        (Texts{"0+4 magic = 51 56 52 00", "1028+4 signature length = 256", "1032+4 version = 1",
               "1036+4 instances = 258 (of the game at once, at the most)",
               "1040+64 crash reporter = crash", "1104+4 anti-tamper solution = 1 (Generic)"}));
    EXPECT_EQ(read.shown.fields[1].sizeBytes, 1024U);
    EXPECT_EQ(std::get<std::string>(read.shown.fields[1].value).size(), 2048U);
}

TEST_F(ReadingSettings, ChecksTheSignature) {
    const auto stateOf = [](const FileToShow& read) {
        return read.shown.signature.value_or(SignatureFacts()).state;
    };
    EXPECT_EQ(stateOf(ReadPlain(plain_)), SignatureState::Good);
    EXPECT_EQ(stateOf(ReadWith(1036, 259)), SignatureState::Bad);
    std::filesystem::remove(directory_ / "base.cer");
    EXPECT_EQ(stateOf(ReadPlain(plain_)), SignatureState::CertificateMissing);
}

TEST_F(ReadingSettings, TellsWhatNoReaderChecks) {
    EXPECT_EQ(ReadWith(1104, 4'000'000).shown.notes,
              Texts{"anti-tamper solution 4,000,000 is not known"});
    Bytes longer = plain_;
    longer.push_back(7);
    EXPECT_EQ(ReadPlain(longer).shown.notes,
              Texts{"the file has 1 byte after its settings, all of which count as signed"});
}

TEST_F(ReadingSettings, KeepsTheFieldsOfAnotherVersion) {
    const FileToShow read = ReadWith(1032, 2);
    EXPECT_EQ(read.shown.kind, ShownKind::RuntimeConfiguration);
    ASSERT_TRUE(read.shown.invalid.has_value());
    EXPECT_EQ(read.shown.invalid->field, "version");
    EXPECT_EQ(read.shown.fields.size(), 7U);
}

TEST_F(ReadingSettings, NameMayFillItsField) {
    Bytes plain = plain_;
    std::fill_n(plain.begin() + 1040, 64, std::uint8_t{'n'});
    EXPECT_EQ(std::get<std::string>(ReadPlain(plain).shown.fields[5].value), std::string(64, 'n'));
}

}  // namespace
}  // namespace sealkeeper
