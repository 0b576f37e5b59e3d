#include "catalogue/stored_entry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/stored_catalogue_support.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::DigestOf;
using test::EntryOf;
using test::Hex;
using test::RecordOf;

TEST(StoredEntry, ReadsEveryField) {
    Bytes record = RecordOf(0x0807060504030201, u"bin/a.dat", {DigestOf("x"), DigestOf("hello")});
    const auto entry = EntryOf(record);
    EXPECT_EQ(entry->FileSizeBytes(), 0x0807060504030201U);
    EXPECT_EQ(entry->NamePosition(), 4U);
    EXPECT_EQ(entry->Path(), L"bin/a.dat");
    EXPECT_EQ(entry->PathUnits(), 9U);
    EXPECT_EQ(entry->DigestCount(), 2U);
    EXPECT_EQ(Hex(entry->Digest(1)), test::kDigestOfHello);
    EXPECT_EQ(Hex(entry->Digest(0)), Hex(DigestOf("x")));
}

TEST(StoredEntry, GivesTheNamePositionAsStored) {
    Bytes record = RecordOf(0, u"a/b", {});
    test::StoreAt<std::uint32_t>(record, 8, 0xFFFFFFFEU);
    EXPECT_EQ(EntryOf(record)->NamePosition(), 0xFFFFFFFEU);
}

TEST(StoredEntry, DigestsOfALargeFileAreToldApart) {
    constexpr std::uint32_t kLast = 65'537;
    std::vector<Sha256Digest> digests(kLast + 1, DigestOf("x"));
    digests[kLast] = DigestOf("hello");
    const Bytes record = RecordOf(0, u"a", digests);
    const auto entry = EntryOf(record);
    EXPECT_EQ(entry->DigestCount(), kLast + 1);
    EXPECT_EQ(Hex(entry->Digest(kLast)), test::kDigestOfHello);
    EXPECT_EQ(Hex(entry->Digest(kLast - 1)), Hex(DigestOf("x")));
}

TEST(StoredEntry, PathOutsideAscii) {
    EXPECT_EQ(EntryOf(RecordOf(0, u"\u00E4/\U0001F3AE", {}))->Path(), L"\u00E4/\U0001F3AE");
}

TEST(StoredEntry, PathEndsAtItsFirstZero) {
    EXPECT_EQ(EntryOf(RecordOf(0, std::u16string(u"ab\0cd", 5), {}))->Path(), L"ab");
    EXPECT_EQ(EntryOf(RecordOf(0, std::u16string(u"\0cd", 3), {}))->Path(), L"");
    // A unit ends the path only if both its bytes are zero.
    EXPECT_EQ(EntryOf(RecordOf(0, u"a\u0100b", {}))->Path(), L"a\u0100b");
}

TEST(StoredEntry, PathMayFillItsField) {
    const auto entry = EntryOf(RecordOf(0, std::u16string(256, u'p'), {DigestOf("")}));
    EXPECT_EQ(entry->Path(), std::wstring(256, L'p'));
}

TEST(StoredEntry, PathIsGivenAsItStands) {
    EXPECT_EQ(EntryOf(RecordOf(0, u"./../a\\b//C", {}))->Path(), L"./../a\\b//C");
}

}  // namespace
}  // namespace sealkeeper
