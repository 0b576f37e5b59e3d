#include "inspect/show/entry_oddities.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/stored_catalogue_support.h"
#include "inspect/show/entry_walk.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::DigestOf;
using test::RecordOf;
using Texts = std::vector<std::string>;

Texts Oddities(const Bytes& raw) {
    CatalogueFile file{test::CatalogueOf(raw, 1), {}};
    EXPECT_EQ(ReadCatalogueHeader(file.bytes, file.bytes.size(), file.header), ResultCode::Ok);
    auto walk = EntryWalk::Begin(file);
    WalkedEntry entry;
    EXPECT_TRUE(walk.has_value() && walk->Next(entry));
    return OdditiesOf(entry.record, entry.path);
}

TEST(EntryOddities, NoneInWhatGenerateWrites) {
    EXPECT_EQ(Oddities(test::RecordOfFile(u"data/a.bin", "hello")), Texts{});
    EXPECT_EQ(Oddities(RecordOf(0, u"empty", {})), Texts{});
    EXPECT_EQ(Oddities(RecordOf(4'194'305, u"...", {DigestOf("a"), DigestOf("b")})), Texts{});
    EXPECT_EQ(Oddities(RecordOf(0, u"a..b/..c/d..", {})), Texts{});
}

struct OddCase {
    Bytes record;
    std::string oddity;
};

Bytes WithBytes(Bytes record, std::size_t offset, const Bytes& bytes) {
    std::copy(bytes.begin(), bytes.end(), record.begin() + static_cast<std::ptrdiff_t>(offset));
    return record;
}

TEST(EntryOddities, EachByItsName) {
    const Bytes plain = RecordOf(0, u"a", {});
    const std::vector<OddCase> cases = {
        {WithBytes(plain, 16, {'b'}),
         "looks aliased: list and verify see 'a', and verify fails where there is no such file"},
        {WithBytes(plain, 522, {1}), "has other bytes than zeros past the end of its path"},
        {WithBytes(plain, 14, {0, 0xD8}),
         "is no UTF-16: a surrogate has no partner, so that verify looks for no such file"},
        {RecordOf(0, std::u16string(256, u'x'), {}),
         "fills the field of its path, which leaves no zero to end it"},
        {RecordOf(0, u"", {}), "has an empty path"},
        {RecordOf(0, u"/a", {}), "leads out of the game directory"},
        {RecordOf(0, u"..", {}), "leads out of the game directory"},
        {RecordOf(0, u"a/../../b", {}), "leads out of the game directory"},
        {RecordOf(0, u"a/../b", {}),
         "has '..' in its path, which generate stores where a pattern has it"},
        {RecordOf(0, u"a\\b", {}), "has a backslash, where generate stores a slash"},
        {RecordOf(5, u"a", {}), "has 0 digests; a file of its size has 1 chunk"},
        {RecordOf(0, u"a", {DigestOf("")}), "has 1 digest; a file of its size has 0 chunks"},
        {WithBytes(plain, 8, {7}), "tells that its name begins at unit 7, where it begins at 0"},
    };
    for (const OddCase& odd : cases) {
        EXPECT_EQ(Oddities(odd.record), Texts{odd.oddity});
    }
}

}  // namespace
}  // namespace sealkeeper
