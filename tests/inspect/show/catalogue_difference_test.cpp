#include "inspect/show/catalogue_difference.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/parsed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::DigestOf;
using test::RecordOf;
using test::RecordOfFile;
using Texts = std::vector<std::string>;

ComparedCatalogue CatalogueOfImage(const Bytes& image) {
    ComparedCatalogue catalogue{{image, {}}, {}};
    EXPECT_EQ(ReadCatalogueHeader(image, image.size(), catalogue.file.header), ResultCode::Ok);
    InvalidReason reason;
    auto entries = EntriesToCompare(catalogue.file, reason);
    EXPECT_TRUE(entries.has_value());
    catalogue.entries = entries.value_or(std::vector<ComparedEntry>());
    return catalogue;
}

ComparedCatalogue Of(const std::vector<Bytes>& records, const Bytes& crl = {}) {
    return CatalogueOfImage(
        test::CatalogueOf(test::Joined(records), static_cast<std::uint32_t>(records.size()), crl));
}

Texts PathsOf(const std::vector<ComparedEntry>& entries) {
    Texts paths;
    for (const ComparedEntry& entry : entries) {
        paths.push_back(entry.path);
    }
    return paths;
}

TEST(CatalogueDifference, SameCatalogues) {
    const auto difference =
        DifferenceOf(Of({RecordOfFile(u"a", "1")}), Of({RecordOfFile(u"a", "1")}));
    EXPECT_FALSE(difference.HasEntries());
    EXPECT_EQ(difference.others, Texts{});
    EXPECT_EQ(difference.unchanged, 1U);
    EXPECT_EQ(difference.before.files, 1U);
    EXPECT_EQ(difference.after.bytes, 1U);
}

TEST(CatalogueDifference, AddedRemovedAndChanged) {
    const auto difference =
        DifferenceOf(Of({RecordOfFile(u"z", "1"), RecordOfFile(u"gone", "12"),
                         RecordOfFile(u"longer", "1"), RecordOfFile(u"other", "1")}),
                     Of({RecordOfFile(u"z", "1"), RecordOfFile(u"new", "123"),
                         RecordOfFile(u"longer", "12"), RecordOfFile(u"other", "2")}));
    EXPECT_EQ(PathsOf(difference.removed), Texts{"gone"});
    EXPECT_EQ(PathsOf(difference.added), Texts{"new"});
    ASSERT_EQ(difference.changed.size(), 2U);
    EXPECT_EQ(difference.changed[0].after.path, "longer");
    EXPECT_EQ(difference.changed[0].before.sizeBytes, 1U);
    EXPECT_EQ(difference.changed[0].after.sizeBytes, 2U);
    EXPECT_EQ(difference.changed[1].after.path, "other");
    EXPECT_EQ(difference.unchanged, 1U);
    EXPECT_EQ(difference.before.bytes, 5U);
    EXPECT_EQ(difference.after.bytes, 7U);
}

TEST(CatalogueDifference, PathsThatStandSeveralTimes) {
    const Bytes one = RecordOfFile(u"a", "1");
    const Bytes two = RecordOfFile(u"a", "2");
    const Bytes three = RecordOfFile(u"a", "3");
    const auto fewer = DifferenceOf(Of({one, two}), Of({two}));
    EXPECT_EQ(fewer.unchanged, 1U);
    ASSERT_EQ(fewer.removed.size(), 1U);
    EXPECT_EQ(fewer.removed[0].digests[0], DigestOf("1")[0]);
    EXPECT_TRUE(fewer.changed.empty());
    const auto more = DifferenceOf(Of({one}), Of({one, one, one}));
    EXPECT_EQ(more.unchanged, 1U);
    EXPECT_EQ(more.added.size(), 2U);
    const auto changed = DifferenceOf(Of({one, two}), Of({three, two, one, one}));
    EXPECT_EQ(changed.unchanged, 2U);
    EXPECT_EQ(changed.added.size(), 2U);
    const auto both = DifferenceOf(Of({one, two}), Of({three}));
    EXPECT_EQ(both.changed.size(), 1U);
    EXPECT_EQ(both.removed.size(), 1U);
}

TEST(CatalogueDifference, AnAliasIsAnotherPath) {
    Bytes aliased = RecordOf(0, u"a", {});
    aliased[16] = 'b';
    const auto difference = DifferenceOf(Of({aliased}), Of({RecordOf(0, u"ab", {})}));
    ASSERT_EQ(difference.removed.size(), 1U);
    EXPECT_EQ(difference.removed[0].path, "ab");
    EXPECT_STREQ(AliasMark(difference.removed[0]), " (aliased)");
    ASSERT_EQ(difference.added.size(), 1U);
    EXPECT_STREQ(AliasMark(difference.added[0]), "");
}

TEST(CatalogueDifference, OddPathsAreToldApart) {
    Bytes odd = RecordOf(0, u"a", {});
    odd[522] = 1;
    Bytes other = odd;
    other[522] = 2;
    EXPECT_TRUE(DifferenceOf(Of({odd}), Of({other})).HasEntries());
    EXPECT_FALSE(DifferenceOf(Of({odd}), Of({odd})).HasEntries());
    Bytes lone = RecordOf(0, u"a", {});
    lone[13] = 0xD8;
    EXPECT_TRUE(DifferenceOf(Of({lone}), Of({RecordOf(0, u"\\ud861", {})})).HasEntries());
}

TEST(CatalogueDifference, WhatIsNoEntry) {
    const Bytes image = test::CatalogueOf(RecordOfFile(u"a", "1"), 1);
    const auto others = [&image](const Bytes& changed) {
        const auto difference = DifferenceOf(CatalogueOfImage(image), CatalogueOfImage(changed));
        EXPECT_FALSE(difference.HasEntries());
        return difference.others;
    };
    const auto changedAt = [&image](std::size_t offset) {
        Bytes changed = image;
        changed[offset] ^= 1;
        return changed;
    };
    EXPECT_EQ(others(changedAt(6)), Texts{"signature layout"});
    for (const std::size_t offset : {8U, 1031U, 1032U, 1035U}) {
        EXPECT_EQ(others(changedAt(offset)), Texts{"signature"}) << offset;
    }
    EXPECT_EQ(others(test::CatalogueOf(RecordOfFile(u"a", "1"), 1, {1})), Texts{"revocation list"});
    EXPECT_EQ(others(changedAt(1044)), Texts{"bytes that belong to no file"});
    const Bytes first = RecordOfFile(u"a", "1");
    const Bytes second = RecordOfFile(u"b", "1");
    EXPECT_EQ(DifferenceOf(Of({first, second}), Of({second, first})).others,
              Texts{"order of entries"});
}

TEST(CatalogueDifference, DigestsThatDiffer) {
    const auto differing = [](const std::vector<Sha256Digest>& before,
                              const std::vector<Sha256Digest>& after) {
        const auto difference =
            DifferenceOf(Of({RecordOf(9, u"a", before)}), Of({RecordOf(9, u"a", after)}));
        EXPECT_EQ(difference.changed.size(), 1U);
        return DifferingDigests(difference.changed.at(0));
    };
    const auto a = DigestOf("a");
    const auto b = DigestOf("b");
    EXPECT_EQ(differing({a, a, a}, {a, b, a}), 1U);
    EXPECT_EQ(differing({a, b}, {b, a}), 2U);
    EXPECT_EQ(differing({a}, {a, a, a}), 2U);
    EXPECT_EQ(differing({b, b}, {}), 2U);
}

TEST(CatalogueDifference, SumsEndAtTheLargestNumber) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
    const auto catalogue = Of({RecordOf(kLargest, u"a", {}), RecordOf(5, u"b", {})});
    EXPECT_EQ(SumOf(catalogue.entries).bytes, kLargest);
}

TEST(CatalogueDifference, EntriesThatAreNotWhole) {
    Bytes image = test::CatalogueOf(RecordOf(0, u"a", {}), 1);
    test::StoreAt<std::uint32_t>(image, 1048, 2);
    CatalogueFile file{image, {}};
    ASSERT_EQ(ReadCatalogueHeader(image, image.size(), file.header), ResultCode::Ok);
    InvalidReason reason;
    EXPECT_FALSE(EntriesToCompare(file, reason).has_value());
    EXPECT_EQ(reason.field, InvalidField::EntryCount);
    Bytes raw = RecordOf(0, u"a", {});
    test::StoreAt<std::uint32_t>(raw, 524, 1);
    file.bytes = test::CatalogueOf(raw, 1);
    ASSERT_EQ(ReadCatalogueHeader(file.bytes, file.bytes.size(), file.header), ResultCode::Ok);
    EXPECT_FALSE(EntriesToCompare(file, reason).has_value());
    EXPECT_EQ(reason.field, InvalidField::DigestCount);
}

}  // namespace
}  // namespace sealkeeper
