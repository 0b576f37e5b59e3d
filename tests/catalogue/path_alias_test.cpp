#include "catalogue/path_alias.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::FieldOf;
using test::TextOf;

AliasMap AliasesOf(const std::vector<std::wstring>& keys) {
    AliasMap aliases;
    for (const std::wstring& key : keys) {
        aliases.emplace(key, L"value of " + key);
    }
    return aliases;
}

struct MatchCase {
    const char* name;
    std::vector<std::wstring> keys;
    std::wstring path;
    std::optional<std::wstring> firstKey;
};

const std::vector<MatchCase>& MatchCases() {
    static const std::vector<MatchCase> cases = {
        {"no keys", {}, L"a", {}},
        {"empty key alone", {L""}, L"a", {}},
        {"empty key alone, empty path", {L""}, L"", {}},
        {"empty key and one that occurs", {L"", L"b"}, L"ab", L"b"},
        {"empty key and one that does not occur", {L"", L"b"}, L"a", {}},
        {"empty path", {L"a"}, L"", {}},
        {"the whole path", {L"a/b"}, L"a/b", L"a/b"},
        {"at the start", {L"a/"}, L"a/bc", L"a/"},
        {"in the middle", {L"/b"}, L"a/bc", L"/b"},
        {"at the end", {L"bc"}, L"a/bc", L"bc"},
        {"key longer than the path", {L"a/bc"}, L"a/b", {}},
        {"key that the path ends within", {L"bcd"}, L"a/bc", {}},
        {"one character differs", {L"abc"}, L"abd", {}},
        {"keys are told apart by case", {L"A", L"a"}, L"a", L"a"},
        {"smaller key past the larger one", {L"b", L"z"}, L"z/b", L"b"},
        {"smaller key before the larger one", {L"b", L"z"}, L"b/z", L"b"},
        {"key that is the start of another", {L"ab", L"abc"}, L"abc", L"ab"},
        {"key that is the start of another, and one further on",
         {L"ab", L"abcd", L"cd"},
         L"xcd",
         L"cd"},
        {"key that is the end of another", {L"abc", L"bc"}, L"xbc", L"bc"},
        {"key that is the end of a larger one", {L"bc", L"xbc"}, L"xbc", L"bc"},
        {"key that ends in a larger one", {L"ab", L"b"}, L"ab", L"ab"},
        {"key inside another", {L"b", L"xbx"}, L"xby", L"b"},
        {"key inside another that occurs", {L"b", L"xbx"}, L"xbx", L"b"},
        {"keys that overlap, smaller one first", {L"ab", L"bc"}, L"abc", L"ab"},
        {"keys that overlap, smaller one last", {L"cb", L"ba"}, L"cba", L"ba"},
        {"run shorter than the key", {L"aaa"}, L"aabaa", {}},
        {"run as long as the key", {L"aaa"}, L"baaab", L"aaa"},
        {"run longer than the key", {L"aaab"}, L"aaaaaab", L"aaab"},
        {"not ASCII", {L"\u00E4\u20AC"}, L"a/\u00E4\u20AC", L"\u00E4\u20AC"},
        {"not ASCII, other character", {L"\u00E4"}, L"a/\u00E5", {}},
        {"above 0xFFFF", {L"/\U0001F3AE"}, L"a/\U0001F3AE", L"/\U0001F3AE"},
        {"same low unit, other character",
         {L"\U0001002F", L"\u002F"},
         L"\U0001002F",
         L"\U0001002F"},
        {"separator with the low unit of the key", {L"\U0001002F"}, L"a/b", {}},
        {"same low unit as the separator", {L"/"}, L"a\U0001002F", {}},
        {"zero character in a key", {std::wstring(L"a\0b", 3)}, L"ab", {}},
    };
    return cases;
}

TEST(FirstAliasIn, GivesTheFirstKeyInOrderThatOccurs) {
    for (const MatchCase& match : MatchCases()) {
        const AliasMap aliases = AliasesOf(match.keys);
        const AliasMap::value_type* found = FirstAliasIn(aliases, match.path);
        ASSERT_EQ(found != nullptr, match.firstKey.has_value()) << match.name;
        if (found != nullptr) {
            EXPECT_EQ(found, &*aliases.find(*match.firstKey)) << match.name;
        }
    }
}

constexpr std::uint32_t kUntouchedNamePosition = 77;

CatalogueEntry EntryOf(const std::u16string& path) {
    CatalogueEntry entry;
    entry.path = FieldOf(path);
    entry.namePosition = kUntouchedNamePosition;
    return entry;
}

// The path field of `path` with four bytes per character.
PathField WideFieldOf(const std::u32string& path) {
    PathField field{};
    for (std::size_t i = 0; i < path.size(); ++i) {
        field.at(2 * i) = static_cast<char16_t>(path[i] & 0xFFFFU);
        field.at(2 * i + 1) = static_cast<char16_t>(path[i] >> 16U);
    }
    return field;
}

struct AliasCase {
    const char* name;
    AliasMap aliases;
    std::u16string path;
    std::u32string aliased;
    std::uint32_t namePosition;
};

const std::vector<AliasCase>& AliasCases() {
    static const std::vector<AliasCase> cases = {
        {"at the start", {{L"bin", L"exe"}}, u"bin/a", U"exe/a", 7},
        {"anywhere, inside a name too", {{L"in/", L"X"}}, u"bin/a", U"bXa", 0},
        {"every occurrence", {{L"a", L"bc"}}, u"a/a/a", U"bc/bc/bc", 11},
        {"goes on after what was put in", {{L"a", L"aa"}}, u"a/ba", U"aa/baa", 5},
        {"nothing is found across what was put in", {{L"ab", L"a"}}, u"abb/aab", U"ab/aa", 5},
        {"occurrences side by side", {{L"ab", L"c"}}, u"abab/abab", U"cc/cc", 5},
        {"occurrences do not overlap", {{L"aa", L"b"}}, u"aaa/aa", U"ba/b", 5},
        {"first key in order, not the longest", {{L"a", L"1"}, {L"ab", L"2"}}, u"ab", U"1b", 0},
        {"first key in order, not the first in the path",
         {{L"b", L"1"}, {L"z", L"2"}},
         u"z/b",
         U"z/1",
         3},
        {"only one key is applied", {{L"a", L"b"}, {L"b", L"c"}}, u"a/b", U"b/b", 3},
        {"upper case comes before lower case", {{L"a", L"1"}, {L"B", L"2"}}, u"a/B", U"a/2", 3},
        {"keys are looked for with their case", {{L"A", L"1"}, {L"a", L"2"}}, u"a", U"2", 0},
        {"replaced by nothing", {{L"bin/", L""}}, u"bin/a", U"a", 0},
        {"the whole path replaced by nothing", {{L"a", L""}}, u"a", U"", 0},
        {"replaced by itself, yet stored wide", {{L"a", L"a"}}, u"a/b", U"a/b", 3},
        {"backslash in a value is kept", {{L"a", L"x\\y"}}, u"a", U"x\\y", 0},
        {"pair of surrogates is one character",
         {{L"b", L"c"}},
         u"\U0001F3AE/b",
         U"\U0001F3AE/c",
         3},
        {"key outside the basic plane", {{L"\U0001F3AE", L"g"}}, u"a/\U0001F3AE", U"a/g", 3},
        // Its low unit is that of '/', and the search is by units.
        {"character that looks like a separator",
         {{L"b", L"\U0001002F"}},
         u"a/b",
         U"a/\U0001002F",
         5},
    };
    return cases;
}

TEST(PathAlias, StoresAReplacedPathAtFourBytesPerCharacter) {
    for (const AliasCase& alias : AliasCases()) {
        CatalogueEntry entry = EntryOf(alias.path);
        CapturedOutput output;
        EXPECT_EQ(ApplyPathAlias(alias.aliases, entry), ResultCode::Ok) << alias.name;
        EXPECT_EQ(output.Take(), "") << alias.name;
        EXPECT_EQ(entry.path, WideFieldOf(alias.aliased)) << alias.name;
        EXPECT_EQ(entry.namePosition, alias.namePosition) << alias.name;
    }
}

TEST(PathAlias, LeavesOtherEntriesUntouched) {
    const std::vector<AliasMap> maps = {
        {}, {{L"", L"y"}}, {{L"x", L"y"}}, {{L"A/", L"y"}}, {{L"a/bc", L"y"}}};
    for (const AliasMap& aliases : maps) {
        CatalogueEntry entry = EntryOf(u"a/b");
        EXPECT_EQ(ApplyPathAlias(aliases, entry), ResultCode::Ok);
        EXPECT_EQ(TextOf(entry.path), u"a/b");
        EXPECT_EQ(entry.namePosition, kUntouchedNamePosition);
    }
}

TEST(PathAlias, ClearsTheRestOfALongerPath) {
    CatalogueEntry entry = EntryOf(std::u16string(255, u'a'));
    EXPECT_EQ(ApplyPathAlias({{std::wstring(255, L'a'), L"b"}}, entry), ResultCode::Ok);
    EXPECT_EQ(entry.path, WideFieldOf(U"b"));
}

TEST(PathAlias, KeepsSizeAndDigests) {
    CatalogueEntry entry = EntryOf(u"a");
    entry.fileSizeBytes = 5;
    entry.digests.resize(1);
    EXPECT_EQ(ApplyPathAlias({{L"a", L"b"}}, entry), ResultCode::Ok);
    EXPECT_EQ(entry.fileSizeBytes, 5U);
    EXPECT_EQ(entry.digests.size(), 1U);
}

TEST(PathAlias, PathOfAtMost127Characters) {
    const std::u32string longest = U"b" + std::u32string(126, U'c');
    CatalogueEntry fits = EntryOf(u"a" + std::u16string(126, u'c'));
    EXPECT_EQ(ApplyPathAlias({{L"a", L"b"}}, fits), ResultCode::Ok);
    EXPECT_EQ(fits.path, WideFieldOf(longest));

    CatalogueEntry tooLong = EntryOf(u"a" + std::u16string(127, u'c'));
    CapturedOutput output;
    EXPECT_EQ(ApplyPathAlias({{L"a", L"\u00E4"}}, tooLong), ResultCode::CatalogueError);
    EXPECT_EQ(output.Take(),
              "[Err!] Path too long for the catalogue: '\xC3\xA4" + std::string(127, 'c') + "'.\n");
}

TEST(PathAlias, CountsCharactersAndNotUnits) {
    // 127 characters, but 254 units.
    std::u16string path;
    std::u32string aliased = U"b";
    for (int i = 0; i < 126; ++i) {
        path += u"\U0001F3AE";
        aliased += U'\U0001F3AE';
    }
    CatalogueEntry entry = EntryOf(u"a" + path);
    EXPECT_EQ(ApplyPathAlias({{L"a", L"b"}}, entry), ResultCode::Ok);
    EXPECT_EQ(entry.path, WideFieldOf(aliased));
}

TEST(PathAlias, LongPathWithoutAnAliasInItIsNoFailure) {
    CatalogueEntry entry = EntryOf(std::u16string(255, u'a'));
    EXPECT_EQ(ApplyPathAlias({{L"b", L"c"}}, entry), ResultCode::Ok);
    EXPECT_EQ(TextOf(entry.path), std::u16string(255, u'a'));
}

}  // namespace
}  // namespace sealkeeper
