#include "inspect/show/stored_path.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/stored_catalogue_support.h"

namespace sealkeeper {
namespace {

using Form = StoredPath::Form;
using Field = std::array<std::uint8_t, 512>;

Field FieldOf(const std::u16string& units) {
    Field field{};
    for (std::size_t i = 0; i < units.size(); ++i) {
        StoreLittleEndian<std::uint16_t>(units[i], std::span(field).subspan(2 * i));
    }
    return field;
}

Field AliasedFieldOf(const std::u32string& characters) {
    Field field{};
    for (std::size_t i = 0; i < characters.size(); ++i) {
        StoreLittleEndian<std::uint32_t>(characters[i], std::span(field).subspan(4 * i));
    }
    return field;
}

TEST(StoredPath, PlainPaths) {
    for (const auto& [units, text] : std::vector<std::pair<std::u16string, std::string>>{
             {u"", ""},
             {u"a", "a"},
             {u"bin/a.dat", "bin/a.dat"},
             {u"Wölfe", "W\xC3\xB6lfe"},
             {u"\U0001F600.pak", "\xF0\x9F\x98\x80.pak"},
             {u"\uFFFF\U0010FFFF", "\xEF\xBF\xBF\xF4\x8F\xBF\xBF"}}) {
        const StoredPath path = ReadStoredPath(FieldOf(units));
        EXPECT_EQ(path.form, Form::Plain) << text;
        EXPECT_EQ(path.spelt, text);
        EXPECT_EQ(path.seen, text);
        EXPECT_FALSE(path.hasLoneSurrogate) << text;
        EXPECT_FALSE(path.fillsField) << text;
    }
}

TEST(StoredPath, NamePosition) {
    EXPECT_EQ(ReadStoredPath(FieldOf(u"name")).namePosition, 0U);
    EXPECT_EQ(ReadStoredPath(FieldOf(u"a/b/name")).namePosition, 4U);
    // In UTF-16 units, as the field stores it.
    EXPECT_EQ(ReadStoredPath(AliasedFieldOf(U"a/b")).namePosition, 3U);
}

TEST(StoredPath, PathThatFillsItsField) {
    const StoredPath full = ReadStoredPath(FieldOf(std::u16string(256, u'x')));
    EXPECT_TRUE(full.fillsField);
    EXPECT_EQ(full.form, Form::Plain);
    EXPECT_EQ(full.spelt, std::string(256, 'x'));
    EXPECT_FALSE(ReadStoredPath(FieldOf(std::u16string(255, u'x'))).fillsField);
}

TEST(StoredPath, AliasedPathsAreSpelt) {
    for (const auto& [characters, text, seen] :
         std::vector<std::tuple<std::u32string, std::string, std::string>>{
             {U"ab", "ab", "a"},
             {U"data/ö", "data/\xC3\xB6", "d"},
             {U"a\U0001F600", "a\xF0\x9F\x98\x80", "a"},
             {std::u32string(128, U'x'), std::string(128, 'x'), "x"}}) {
        const StoredPath path = ReadStoredPath(AliasedFieldOf(characters));
        EXPECT_EQ(path.form, Form::Aliased) << text;
        EXPECT_EQ(path.spelt, text);
        EXPECT_EQ(path.seen, seen);
    }
}

TEST(StoredPath, AliasOfOneCharacterLooksPlain) {
    EXPECT_EQ(ReadStoredPath(AliasedFieldOf(U"x")).form, Form::Plain);
}

TEST(StoredPath, OtherBytesPastTheEnd) {
    Field odd = FieldOf(u"path");
    odd[511] = 1;
    Field surrogate = AliasedFieldOf(U"ab");
    surrogate[9] = 0xD8;
    Field beyondUnicode = AliasedFieldOf(U"ab");
    beyondUnicode[6] = 0x11;
    Field more = AliasedFieldOf(U"ab");
    more[12] = 'c';
    for (const Field& field : {odd, surrogate, beyondUnicode, more}) {
        const StoredPath path = ReadStoredPath(field);
        EXPECT_EQ(path.form, Form::BytesPastEnd);
        EXPECT_EQ(path.spelt, path.seen);
    }
    EXPECT_EQ(ReadStoredPath(odd).spelt, "path");
}

TEST(StoredPath, SurrogatesWithoutAPartnerAreWrittenOut) {
    for (const auto& [units, text] : std::vector<std::pair<std::u16string, std::string>>{
             {{u'a', 0xD800}, "a\\ud800"},
             {{0xDBFF, u'b'}, "\\udbffb"},
             {{0xDC00, u'b'}, "\\udc00b"},
             {{0xDFFF, 0xD83D, 0xDE00}, "\\udfff\xF0\x9F\x98\x80"},
             {{0xD83D, 0xD83D, 0xDE00}, "\\ud83d\xF0\x9F\x98\x80"}}) {
        const StoredPath path = ReadStoredPath(FieldOf(units));
        EXPECT_EQ(path.spelt, text);
        EXPECT_TRUE(path.hasLoneSurrogate) << text;
    }
    std::u16string full(256, u'x');
    full.back() = 0xD800;
    EXPECT_TRUE(ReadStoredPath(FieldOf(full)).hasLoneSurrogate);
}

}  // namespace
}  // namespace sealkeeper
