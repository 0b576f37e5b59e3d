#include "inspect/show/entry_walk.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/parsed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::DigestOf;

CatalogueFile FileOf(Bytes image) {
    CatalogueFile file{std::move(image), {}};
    EXPECT_EQ(ReadCatalogueHeader(file.bytes, file.bytes.size(), file.header), ResultCode::Ok);
    return file;
}

TEST(EntryWalk, GoesOverAllEntries) {
    const CatalogueFile file = FileOf(test::CatalogueOf(test::ThreeRecords(), 3));
    auto walk = EntryWalk::Begin(file);
    ASSERT_TRUE(walk.has_value());
    std::vector<std::string> paths;
    WalkedEntry entry;
    while (walk->Next(entry)) {
        EXPECT_EQ(walk->HasEnded(), paths.size() == 2);
        paths.push_back(entry.path.spelt);
    }
    EXPECT_EQ(paths, (std::vector<std::string>{"b", "dir/none", "a"}));
    EXPECT_TRUE(walk->HasEnded());
    EXPECT_EQ(walk->BytesLeft(), 0U);
}

TEST(EntryWalk, GivesTheDigestsOfTheCurrentEntryAlone) {
    const CatalogueFile file = FileOf(test::CatalogueOf(test::ThreeRecords(), 3));
    auto walk = EntryWalk::Begin(file);
    ASSERT_TRUE(walk.has_value());
    WalkedEntry entry;
    Sha256Digest digest;
    EXPECT_FALSE(walk->NextDigest(digest));
    ASSERT_TRUE(walk->Next(entry));
    ASSERT_TRUE(walk->NextDigest(digest));
    EXPECT_EQ(digest, DigestOf("1"));
    ASSERT_TRUE(walk->NextDigest(digest));
    EXPECT_EQ(digest, DigestOf("2"));
    EXPECT_FALSE(walk->NextDigest(digest));
    ASSERT_TRUE(walk->Next(entry));
    EXPECT_FALSE(walk->NextDigest(digest));
    ASSERT_TRUE(walk->Next(entry));
    ASSERT_TRUE(walk->NextDigest(digest));
    EXPECT_EQ(digest, DigestOf("hello"));
    EXPECT_FALSE(walk->Next(entry));
}

TEST(EntryWalk, EndsAtAnEntryThatIsNotWhole) {
    Bytes raw = test::ThreeRecords();
    test::StoreAt<std::uint32_t>(raw, 592 + 524, 1000);
    const CatalogueFile file = FileOf(test::CatalogueOf(raw, 3));
    InvalidReason reason;
    auto walk = EntryWalk::Begin(file, &reason);
    ASSERT_TRUE(walk.has_value());
    WalkedEntry entry;
    EXPECT_TRUE(walk->Next(entry));
    EXPECT_FALSE(walk->Next(entry));
    EXPECT_FALSE(walk->HasEnded());
    EXPECT_EQ(reason.field, InvalidField::DigestCount);
    EXPECT_EQ(reason.index, 1U);
}

TEST(EntryWalk, TakesNoBlockThatIsNotSound) {
    const CatalogueFile file = FileOf(test::CatalogueOf(test::ThreeRecords(), 9));
    InvalidReason reason;
    EXPECT_FALSE(EntryWalk::Begin(file, &reason).has_value());
    EXPECT_EQ(reason.field, InvalidField::EntryCount);
}

}  // namespace
}  // namespace sealkeeper
