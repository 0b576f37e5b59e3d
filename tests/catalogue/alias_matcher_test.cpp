#include "catalogue/alias_matcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

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
        {"smaller key behind the larger one", {L"b", L"z"}, L"z/b", L"b"},
        {"smaller key before the larger one", {L"b", L"z"}, L"b/z", L"b"},
        {"smaller key last of many", {L"a", L"b", L"c", L"d"}, L"dcb", L"b"},
        {"larger key again behind the smaller one", {L"a", L"b", L"z"}, L"z/b/z", L"b"},
        {"key that is the start of another", {L"ab", L"abc"}, L"abc", L"ab"},
        {"key that is the start of another, and one further on",
         {L"ab", L"abcd", L"cd"},
         L"xcd",
         L"cd"},
        {"key that goes on behind another which ends", {L"ab", L"b"}, L"xb", L"b"},
        {"key that is the end of another", {L"abc", L"bc"}, L"xbc", L"bc"},
        {"key that is the end of a larger one", {L"bc", L"xbc"}, L"xbc", L"bc"},
        {"key that ends in a larger one", {L"ab", L"b"}, L"ab", L"ab"},
        {"key inside another", {L"b", L"xbx"}, L"xby", L"b"},
        {"key inside another that occurs", {L"b", L"xbx"}, L"xbx", L"b"},
        {"keys that overlap, smaller one first", {L"ab", L"bc"}, L"abc", L"ab"},
        {"keys that overlap, smaller one last", {L"cb", L"ba"}, L"cba", L"ba"},
        {"goes on with the end of what was read", {L"abcd", L"bcx"}, L"abcx", L"bcx"},
        {"goes on with the end of the end", {L"abcd", L"bce", L"cx"}, L"abcx", L"cx"},
        {"goes on past an end that does not go on", {L"abd", L"bce", L"xabcd"}, L"xabce", L"bce"},
        {"goes on within a key with its own start", {L"ababc"}, L"abababc", L"ababc"},
        {"three keys deep", {L"c", L"xbcy", L"xxbcz"}, L"xxbc", L"c"},
        {"starts again after a character of no key", {L"ab"}, L"a-b-ab", L"ab"},
        {"starts again with the character that differs", {L"ab"}, L"aab", L"ab"},
        {"run shorter than the key", {L"aaa"}, L"aabaa", {}},
        {"run as long as the key", {L"aaa"}, L"baaab", L"aaa"},
        {"run longer than the key", {L"aaab"}, L"aaaaaab", L"aaab"},
        {"runs of several lengths", {L"aa", L"aaa", L"aaaa"}, L"baaaa", L"aa"},
        {"run that ends too early for the longer keys", {L"aaab", L"aab"}, L"aab", L"aab"},
        {"many characters behind one start",
         {L"a0", L"a2", L"a4", L"a6", L"a8"},
         L"a1a3a5a7a9a8",
         L"a8"},
        {"many first characters", {L"b", L"d", L"f", L"h", L"j"}, L"aceh", L"h"},
        // Their last six bits are alike.
        {"starts again with a character much like the first one", {L"!b"}, L"a!a!b", L"!b"},
        {"first characters much alike", {L"!b", L"ab"}, L"!a!!ab", L"ab"},
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

TEST(AliasMatcher, GivesTheFirstKeyInOrderThatOccurs) {
    for (const MatchCase& match : MatchCases()) {
        const AliasMap aliases = AliasesOf(match.keys);
        const AliasMap::value_type* found = AliasMatcher(aliases).FirstKeyIn(match.path);
        ASSERT_EQ(found != nullptr, match.firstKey.has_value()) << match.name;
        if (found != nullptr) {
            EXPECT_EQ(found, &*aliases.find(*match.firstKey)) << match.name;
        }
    }
}

TEST(AliasMatcher, IsEmptyWithoutAKeyThatCouldOccur) {
    const AliasMap none;
    const AliasMap emptyKey = AliasesOf({L""});
    const AliasMap oneKey = AliasesOf({L"", L"a"});
    EXPECT_TRUE(AliasMatcher(none).IsEmpty());
    EXPECT_TRUE(AliasMatcher(emptyKey).IsEmpty());
    EXPECT_FALSE(AliasMatcher(oneKey).IsEmpty());
}

// Neither the depth of the stack nor the number of steps may depend on how the keys end.
TEST(AliasMatcher, KeysOfAMillionCharacters) {
    constexpr std::size_t kLength = 1'000'000;
    const std::wstring run(kLength, L'a');
    const AliasMap aliases = AliasesOf({run + L"b", run + L"c"});
    const AliasMatcher matcher(aliases);
    EXPECT_EQ(matcher.FirstKeyIn(run + run), nullptr);
    EXPECT_EQ(matcher.FirstKeyIn(run + L"d" + run), nullptr);
    EXPECT_EQ(matcher.FirstKeyIn(run + run + L"c"), &*aliases.rbegin());
    EXPECT_EQ(matcher.FirstKeyIn(run + L"c" + run + L"b"), &*aliases.begin());
}

// The high bits of a linear congruential generator, ANSI C's example of `rand`.
class PseudoRandom {
  public:
    // 0 to `limit` - 1.
    std::size_t Below(std::size_t limit) {
        state_ = (state_ * 1103515245U + 12345U) & 0x7FFFFFFFU;
        return (state_ >> 16U) % limit;
    }

    std::wstring Text(std::size_t longest, std::size_t alphabet) {
        std::wstring text(Below(longest + 1), L'\0');
        std::generate(text.begin(), text.end(),
                      [&] { return kCharacters[Below(std::min(alphabet, kCharacters.size()))]; });
        return text;
    }

  private:
    inline static const std::wstring kCharacters = L"ab/\U0001F3AE\u00E4z";

    std::uint32_t state_ = 1;
};

const AliasMap::value_type* FirstKeyBySearchingEach(const AliasMap& aliases,
                                                    const std::wstring& path) {
    const auto found = std::find_if(aliases.begin(), aliases.end(), [&path](const auto& alias) {
        return !alias.first.empty() && path.find(alias.first) != std::wstring::npos;
    });
    return found == aliases.end() ? nullptr : &*found;
}

TEST(AliasMatcher, GivesWhatSearchingForEachKeyGives) {
    constexpr int kMaps = 4000;
    constexpr int kPathsPerMap = 10;
    PseudoRandom random;
    std::size_t matches = 0;
    for (int map = 0; map < kMaps; ++map) {
        const std::size_t alphabet = 1 + random.Below(6);
        const std::size_t longestKey = 1 + random.Below(12);
        AliasMap aliases;
        for (std::size_t count = random.Below(12); count > 0; --count) {
            aliases.emplace(random.Text(longestKey, alphabet), L"");
        }
        const AliasMatcher matcher(aliases);
        for (int i = 0; i < kPathsPerMap; ++i) {
            const std::wstring path = random.Text(30, alphabet);
            const AliasMap::value_type* expected = FirstKeyBySearchingEach(aliases, path);
            ASSERT_EQ(matcher.FirstKeyIn(path), expected)
                << "map " << map << ", " << WideToUtf8(path);
            matches += expected != nullptr ? 1 : 0;
        }
    }
    // Both outcomes have to be common for the comparison to say something.
    EXPECT_GT(matches, std::size_t{kMaps});
    EXPECT_LT(matches, std::size_t{kMaps} * (kPathsPerMap - 1));
}

}  // namespace
}  // namespace sealkeeper
