#include "config/config_outline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "config/config_dump.h"
#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

ConfigOutline OutlineOf(std::string_view text) {
    ConfigDocument document;
    ConfigOutline outline;
    static_cast<void>(OutlineConfigText(text, document, outline));
    return outline;
}

std::string_view Part(std::string_view text, std::size_t begin, std::size_t end) {
    return text.substr(begin, end - begin);
}

TEST(ConfigOutline, EmptyTextFailsAndHasNothing) {
    ConfigDocument document;
    ConfigOutline outline;
    EXPECT_FALSE(OutlineConfigText("", document, outline));
    EXPECT_TRUE(outline.sections.empty());
    EXPECT_FALSE(outline.stop);
}

TEST(ConfigOutline, TellsWhereSectionsStand) {
    const std::string text = "# c\nOne {\n} two : x {k=1;}\n";
    const ConfigOutline outline = OutlineOf(text);
    ASSERT_EQ(outline.sections.size(), 2U);
    EXPECT_EQ(outline.sections[0].name, "one");
    EXPECT_EQ(outline.sections[0].begin, text.find("One"));
    EXPECT_EQ(outline.sections[0].brace, text.find('{'));
    EXPECT_EQ(outline.sections[0].closingBrace, text.find('}'));
    EXPECT_EQ(outline.sections[1].name, "two");
    EXPECT_EQ(outline.sections[1].brace, text.rfind('{'));
    EXPECT_EQ(outline.sections[1].closingBrace, text.rfind('}'));
    EXPECT_EQ(outline.openSection, kNoIndex);
    EXPECT_FALSE(outline.stop);
}

struct OutlineValueCase {
    const char* name;
    // The value is between two '|'.
    std::string marked;
    ConfigValueKind kind;
    std::vector<std::string> texts;
    std::int64_t number;
};

TEST(ConfigOutline, TellsWhereValuesStand) {
    const std::vector<OutlineValueCase> cases = {
        {"list", R"(|["a", "", "b\\c"]| ;)", ConfigValueKind::List, {"a", "b\\c"}, 0},
        {"table",
         R"(|(["a", "1"], ["a" "2"])| ;)",
         ConfigValueKind::PairTable,
         {"a", "1", "a", "2"},
         0},
        {"table that ends early",
         R"(|("a", "1", "", "2")|)",
         ConfigValueKind::PairTable,
         {"a", "1"},
         0},
        {"string", R"(|"a//b"| )", ConfigValueKind::String, {"a//b"}, 0},
        {"empty string", R"(|""| )", ConfigValueKind::String, {""}, 0},
        {"number", "|12 x\n;| ", ConfigValueKind::Number, {}, 12},
        {"wrapped number", "|4294967295;| ", ConfigValueKind::Number, {}, -1},
        {"true", "|TRUE|;", ConfigValueKind::Flag, {}, 1},
        {"false", "|false|}", ConfigValueKind::Flag, {}, 0},
    };
    for (const OutlineValueCase& value : cases) {
        std::string text = "s { Key = " + value.marked + " } \n";
        const std::size_t begin = text.find('|');
        text.erase(begin, 1);
        const std::size_t end = text.find('|');
        text.erase(end, 1);
        const ConfigOutline outline = OutlineOf(text);
        ASSERT_EQ(outline.values.size(), 1U) << value.name;
        const OutlinedValue& found = outline.values[0];
        EXPECT_EQ(found.kind, value.kind) << value.name;
        EXPECT_EQ(Part(text, found.begin, found.end), Part(text, begin, end)) << value.name;
        EXPECT_EQ(outline.keys[found.key].name, "key") << value.name;
        EXPECT_EQ(outline.keys[found.key].begin, 4U) << value.name;
        EXPECT_EQ(found.section, 0U) << value.name;
        EXPECT_EQ(found.number, value.number) << value.name;
        std::vector<std::string> texts;
        for (const OutlinedText& part : found.texts) {
            texts.push_back(part.text);
            EXPECT_EQ(text[part.begin - 1], '"') << value.name;
            EXPECT_EQ(text[part.end], '"') << value.name;
        }
        EXPECT_EQ(texts, value.texts) << value.name;
    }
}

TEST(ConfigOutline, KeyBelongsToItsSectionAndItsValueToALaterOne) {
    const ConfigOutline outline = OutlineOf("s {k = } t {5; } \n");
    ASSERT_EQ(outline.values.size(), 1U);
    EXPECT_EQ(outline.keys[0].section, 0U);
    EXPECT_EQ(outline.values[0].section, 1U);
}

TEST(ConfigOutline, FindsTheValuesOfAKey) {
    const ConfigOutline outline = OutlineOf("s {k=1; k=[\"a\"] l=2;} t {k=3;} S {K=\"v\"}\n");
    const auto values = ValuesOf(outline, "s", "k");
    ASSERT_EQ(values.size(), 3U);
    EXPECT_EQ(values[0]->number, 1);
    EXPECT_EQ(values[1]->kind, ConfigValueKind::List);
    EXPECT_EQ(values[2]->kind, ConfigValueKind::String);
    EXPECT_TRUE(ValuesOf(outline, "t", "l").empty());
}

struct CommentCase {
    const char* name;
    std::string text;
    // The text of the only comment.
    std::string comment;
    // The offset in it at which the block begins.
    std::size_t block;
    bool isClosed;
};

TEST(ConfigOutline, TellsWhereCommentsStand) {
    const std::vector<CommentCase> cases = {
        {"hash", " # c # d\nx {}", "# c # d", kNoOffset, true},
        {"slashes", "//c\r\nx {}", "//c\r", kNoOffset, true},
        {"block", "/* c\n # d */ x {}", "/* c\n # d */", 0, true},
        {"block in a line comment", "# c/* d\n e*/ x {}", "# c/* d\n e*/", 3, true},
        {"line comment to the end", "# c d", "# c d", kNoOffset, false},
        {"unclosed block", "/* c\n d", "/* c\n d", 0, false},
        {"no end of a block", "// c */ d\nx {}", "// c */ d", kNoOffset, true},
    };
    for (const CommentCase& comment : cases) {
        const ConfigOutline outline = OutlineOf(comment.text);
        ASSERT_EQ(outline.comments.size(), 1U) << comment.name;
        const OutlinedComment& found = outline.comments[0];
        EXPECT_EQ(Part(comment.text, found.begin, found.end), comment.comment) << comment.name;
        EXPECT_EQ(found.isClosed, comment.isClosed) << comment.name;
        EXPECT_EQ(found.block == kNoOffset ? kNoOffset : found.block - found.begin, comment.block)
            << comment.name;
    }
}

TEST(ConfigOutline, TellsOfBlocksInsideABlock) {
    const ConfigOutline outline = OutlineOf("/* a /*/ b /* */ s {}");
    ASSERT_EQ(outline.comments.size(), 1U);
    EXPECT_EQ(outline.comments[0].innerBlocks, (std::vector<std::size_t>{5, 11}));
}

struct StopCase {
    ConfigStop why;
    // With a '|' before the offset.
    std::string marked;
};

TEST(ConfigOutline, TellsWhereAndWhyTheScanStopped) {
    const std::vector<StopCase> cases = {
        {ConfigStop::ColonForSectionName, "s {} |: {}\n"},
        {ConfigStop::UnendedSectionName, "s {} |sss"},
        {ConfigStop::NoOpeningBrace, "s {} |sss x\n"},
        {ConfigStop::EqualsSignForKey, "s {k=1; |= 2;}\n"},
        {ConfigStop::UnendedKey, "s { k=1; |kkk"},
        {ConfigStop::NoValue, "s { k=1; |kkk =\n "},
        {ConfigStop::NoClosingBracket, "s {k= |[\"a\"}\n"},
        {ConfigStop::EmptyBrackets, "s {k= |[]}\n"},
        {ConfigStop::LineFeedInElement, "s {k= |[\"a\nb\"]}\n"},
        {ConfigStop::NoClosingParenthesis, "s {k= |(\"a\"}\n"},
        {ConfigStop::EmptyParentheses, "s {k= |()}\n"},
        {ConfigStop::NoClosingQuote, "s {k= |\"a}\n"},
        {ConfigStop::NoSemicolon, "s {k= |12}\n"},
        {ConfigStop::UnknownWord, "s {k= |yes}\n"},
    };
    for (const StopCase& stop : cases) {
        std::string text = stop.marked;
        const std::size_t offset = text.find('|');
        text.erase(offset, 1);
        const ConfigOutline outline = OutlineOf(text);
        ASSERT_TRUE(outline.stop) << stop.marked;
        EXPECT_EQ(outline.stop->why, stop.why) << stop.marked;
        EXPECT_EQ(outline.stop->offset, offset) << stop.marked;
    }
}

TEST(ConfigOutline, TellsWhatWasBegunAtTheEnd) {
    const ConfigOutline key = OutlineOf("s {k=5");
    EXPECT_FALSE(key.stop);
    EXPECT_EQ(key.openSection, 0U);
    EXPECT_EQ(key.pendingKey, 0U);

    const ConfigOutline brace = OutlineOf("s {k=5;}");
    EXPECT_FALSE(brace.stop);
    EXPECT_EQ(brace.openSection, 0U) << "the last byte is not looked at";
    EXPECT_EQ(brace.pendingKey, kNoIndex);
}

// The text at each recorded place must be what was recorded.
void ExpectPlacesHold(std::string_view text, const ConfigOutline& outline) {
    const auto standsAt = [text](const std::string& name, std::size_t begin) {
        return LowerCasedAscii(text.substr(begin, name.size())) == name;
    };
    for (const OutlinedSection& section : outline.sections) {
        EXPECT_TRUE(standsAt(section.name, section.begin));
        EXPECT_EQ(text[section.brace], '{');
        EXPECT_TRUE(section.closingBrace == kNoOffset || text[section.closingBrace] == '}');
    }
    for (const OutlinedKey& key : outline.keys) {
        EXPECT_TRUE(standsAt(key.name, key.begin));
    }
    for (const OutlinedValue& value : outline.values) {
        EXPECT_LT(value.begin, value.end);
        EXPECT_LE(value.end, text.size());
        for (const OutlinedText& part : value.texts) {
            EXPECT_LT(value.begin, part.begin);
            EXPECT_LT(part.end, value.end);
            EXPECT_EQ(Part(text, part.begin, part.end).find('"'), std::string_view::npos);
        }
    }
    for (const OutlinedComment& comment : outline.comments) {
        EXPECT_TRUE(text[comment.begin] == '#' || text[comment.begin] == '/');
        EXPECT_LT(comment.begin, comment.end);
        EXPECT_LE(comment.end, text.size());
    }
}

TEST(ConfigOutline, RandomTextsGiveTheDocumentThatParsingGives) {
    const std::vector<std::string> fragments = {"s ",
                                                "t ",
                                                "{",
                                                "}",
                                                "k",
                                                "l",
                                                "=",
                                                " = ",
                                                "5",
                                                "12;",
                                                ";",
                                                "[",
                                                "]",
                                                "(",
                                                ")",
                                                "\"",
                                                "\"v\"",
                                                "/*",
                                                "*/",
                                                "//",
                                                "#",
                                                "\n",
                                                " ",
                                                "true",
                                                "false",
                                                "[\"a\"]",
                                                "\\\\",
                                                ":",
                                                "k = 1;",
                                                "s {\n",
                                                "}\n",
                                                "l=[\"x\", \"y\"]\n",
                                                "p=(\"x\",\"1\");"};
    std::mt19937 random(12);
    const auto upTo = [&random](std::size_t count) { return random() % count; };
    std::size_t values = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = "s {";
        for (std::size_t count = upTo(30); count > 0; --count) {
            text += fragments[upTo(fragments.size())];
        }
        ConfigDocument document;
        ConfigOutline outline;
        const bool parsed = OutlineConfigText(text, document, outline);
        ASSERT_EQ((parsed ? "" : "false: ") + test::Dump(document), test::ParsedDump(text)) << text;
        ExpectPlacesHold(text, outline);
        ASSERT_FALSE(testing::Test::HasFailure()) << text;
        values += outline.values.size();
    }
    EXPECT_GT(values, 10'000U) << "too few of them hold anything";
}

}  // namespace
}  // namespace sealkeeper
