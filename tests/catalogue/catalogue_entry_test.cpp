#include "catalogue/catalogue_entry.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::DigestTexts;
using test::FieldOf;
using test::kDigestOfHello;
using test::ScopedCurrentDirectory;
using test::TempDirectory;
using test::TextOf;
using test::WithoutProgressDots;

// Paths too long for the file system belong to missing files, which count as empty.
struct EntryOutcome {
    ResultCode code;
    std::string output;
    CatalogueEntry entry;
};

EntryOutcome Built(const std::wstring& path) {
    EntryOutcome outcome{ResultCode::Ok, {}, {}};
    // Must be overwritten.
    outcome.entry.fileSizeBytes = 99;
    outcome.entry.namePosition = 99;
    outcome.entry.path.fill(u'x');
    outcome.entry.digests.resize(3);
    CapturedOutput output;
    outcome.code = BuildCatalogueEntry(path, outcome.entry);
    outcome.output = WithoutProgressDots(output.Take());
    return outcome;
}

TEST(CatalogueEntry, FileWithContent) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("bin/a.dat", "hello");
    const EntryOutcome outcome = Built(L"./bin/a.dat");
    EXPECT_EQ(outcome.code, ResultCode::Ok);
    EXPECT_EQ(outcome.output, "[Info] Hashing ./bin/a.dat...\n");
    EXPECT_EQ(outcome.entry.fileSizeBytes, 5U);
    EXPECT_EQ(outcome.entry.namePosition, 4U);
    EXPECT_EQ(TextOf(outcome.entry.path), u"bin/a.dat");
    EXPECT_EQ(DigestTexts(outcome.entry.digests), std::vector<std::string>{kDigestOfHello});
}

TEST(CatalogueEntry, EmptyFile) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("a/b", "");
    const EntryOutcome outcome = Built(L"./a/b");
    EXPECT_EQ(outcome.code, ResultCode::Ok);
    EXPECT_EQ(outcome.output, "[Warn] [Warning] Empty file: './a/b'.\n");
    EXPECT_EQ(outcome.entry.fileSizeBytes, 0U);
    EXPECT_EQ(TextOf(outcome.entry.path), u"a/b");
    EXPECT_TRUE(outcome.entry.digests.empty());
}

TEST(CatalogueEntry, MissingFileCountsAsEmpty) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    const EntryOutcome outcome = Built(L"./gone");
    EXPECT_EQ(outcome.code, ResultCode::Ok);
    EXPECT_EQ(outcome.output, "[Warn] [Warning] Empty file: './gone'.\n");
    EXPECT_EQ(outcome.entry.fileSizeBytes, 0U);
    EXPECT_EQ(TextOf(outcome.entry.path), u"gone");
    EXPECT_TRUE(outcome.entry.digests.empty());
}

TEST(CatalogueEntry, FifoCountsAsEmptyAndIsNotWaitedFor) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    ASSERT_EQ(mkfifo("fifo", 0600), 0);
    const EntryOutcome outcome = Built(L"./fifo");
    EXPECT_EQ(outcome.code, ResultCode::Ok);
    EXPECT_EQ(outcome.output, "[Warn] [Warning] Empty file: './fifo'.\n");
}

TEST(CatalogueEntry, EmptyPathFailsInSilence) {
    const EntryOutcome outcome = Built(L"");
    EXPECT_EQ(outcome.code, ResultCode::CatalogueIOError);
    EXPECT_EQ(outcome.output, "");
}

struct PathCase {
    const char* name;
    std::wstring collected;
    std::u16string stored;
    std::uint32_t namePosition;
};

TEST(CatalogueEntry, StoredFormOfAPath) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    const std::vector<PathCase> cases = {
        {"with ./", L"./a/b", u"a/b", 2},
        {"without ./", L"a/b", u"a/b", 2},
        {"no separator", L"./x", u"x", 0},
        {"backslashes", L"./a\\b\\c", u"a/b/c", 4},
        {"only the first ./ goes", L"././a", u"./a", 2},
        {"a backslash after the dot is no ./", L".\\a", u"./a", 2},
        {"a file whose name begins with a dot", L".a", u".a", 0},
        {"separator at the end", L"./a/", u"a/", 2},
        {"separator at the start", L"/sealkeeper-no-such-file", u"/sealkeeper-no-such-file", 1},
        {"case is kept", L"./Bin/A.DAT", u"Bin/A.DAT", 4},
        {"dot dot is kept", L"./a/../b", u"a/../b", 5},
        {"pair of surrogates", L"./\U0001F3AE/b", u"\U0001F3AE/b", 3},
        // U+2F00 is no separator, although its low byte is '/'.
        {"U+2F00", L"./a/\u2F00", u"a/\u2F00", 2},
        {"what has no UTF-16 form", std::wstring(1, static_cast<wchar_t>(0xD800)),
         u"wchar_to_utf16 iconv ERROR ", 0},
    };
    for (const PathCase& path : cases) {
        const EntryOutcome outcome = Built(path.collected);
        EXPECT_EQ(outcome.code, ResultCode::Ok) << path.name;
        EXPECT_EQ(TextOf(outcome.entry.path), path.stored) << path.name;
        EXPECT_EQ(outcome.entry.namePosition, path.namePosition) << path.name;
    }
}

TEST(CatalogueEntry, NamePositionReadsTheWholeField) {
    PathField field{};
    EXPECT_EQ(NamePositionOf(field), 0U);
    field.back() = u'/';
    EXPECT_EQ(NamePositionOf(field), 256U);
    EXPECT_EQ(NamePositionOf(FieldOf(u"/")), 1U);
    EXPECT_EQ(NamePositionOf(FieldOf(u"a/b/c")), 4U);
    EXPECT_EQ(NamePositionOf(FieldOf(u"a\\b")), 0U);
}

struct LengthCase {
    const char* name;
    std::wstring path;
    bool fits;
};

TEST(CatalogueEntry, PathOfAtMost255Units) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    const std::wstring controller = L"\U0001F3AE";
    const std::vector<LengthCase> cases = {
        {"255 units", std::wstring(255, L'a'), true},
        {"256 units", std::wstring(256, L'a'), false},
        {"255 units after ./", L"./" + std::wstring(255, L'a'), true},
        {"256 units after ./", L"./" + std::wstring(256, L'a'), false},
        {"a pair that ends at 255", std::wstring(253, L'a') + controller, true},
        {"a pair that ends at 256", std::wstring(254, L'a') + controller, false},
        {"255 units of two bytes in UTF-8", std::wstring(255, L'\u00E4'), true},
    };
    for (const LengthCase& length : cases) {
        const EntryOutcome outcome = Built(length.path);
        EXPECT_EQ(outcome.code, length.fits ? ResultCode::Ok : ResultCode::CatalogueError)
            << length.name;
    }
}

TEST(CatalogueEntry, LongPathIsNamedInUtf8BeforeAnythingIsHashed) {
    const EntryOutcome outcome = Built(L"./" + std::wstring(255, L'a') + L"\u00E4");
    EXPECT_EQ(outcome.code, ResultCode::CatalogueError);
    EXPECT_EQ(outcome.output, "[Err!] Path too long for the catalogue: './" +
                                  std::string(255, 'a') + "\xC3\xA4'.\n");
}

TEST(CatalogueEntry, HashingFailureIsPassedOn) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("folder/x", "");
    struct stat status {};
    ASSERT_EQ(stat("folder", &status), 0);
    if (status.st_size == 0) {
        GTEST_SKIP() << "directories have no size on this file system";
    }
    const EntryOutcome outcome = Built(L"./folder");
    EXPECT_EQ(outcome.code, ResultCode::CatalogueIOError);
    EXPECT_EQ(outcome.output, "[Info] Hashing ./folder...");
}

}  // namespace
}  // namespace sealkeeper
