#include "config/config_document.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "config/config_dump.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Dump;
using test::HasSection;
using test::ParsedDump;
using test::ParsedEntries;
using test::TempDirectory;

// Each key occurs once, so that no later value replaces an earlier one.
const std::string& RepresentativeText() {
    static const std::string text =
        "# a comment /* and a block */\n"
        "config_info { version = 2; }\n"
        "Search_Options : {\n"
        "    words = [\"*.exe\", \"\", \"bin\\\\*.dylib\"] // line\n"
        "    number = 1024;\n"
        "    off = false\n"
        "    /* block\n */\n"
        "    pairs = ( [\"a\\\\b\", \"1\"], [\"c\", \"2\"] );\n"
        "    text = \"C:\\\\\\\\dir\"\n"
        "    on = TRUE;\n"
        "}\n";
    return text;
}

constexpr std::string_view kRepresentativeDump =
    "config_info{version!true version=2} "
    "search_options{words[*.exe|bin\\*.dylib] pairs(a\\b>1|c>2) number!true number=1024 on!true "
    "off!false text'C:\\dir'}";

bool Contains(const std::set<std::string>& all, const std::set<std::string>& part) {
    return std::includes(all.begin(), all.end(), part.begin(), part.end());
}

TEST(ConfigDocument, EmptyTextIsFalse) {
    ConfigDocument document;
    EXPECT_FALSE(document.ParseConfigText(""));
    EXPECT_EQ(Dump(document), "");
}

TEST(ConfigDocument, ParsesTheRepresentativeText) {
    EXPECT_EQ(ParsedDump(RepresentativeText()), kRepresentativeDump);
}

TEST(ConfigDocument, EveryTruncationKeepsOnlyWhatWasComplete) {
    const std::string& text = RepresentativeText();
    const std::set<std::string> whole = ParsedEntries(text);
    ASSERT_EQ(whole.size(), 9U);
    std::set<std::string> previous;
    for (std::size_t length = 1; length <= text.size(); ++length) {
        ConfigDocument document;
        EXPECT_TRUE(document.ParseConfigText(text.substr(0, length))) << length;
        const std::set<std::string> kept = ParsedEntries(text.substr(0, length));
        EXPECT_TRUE(Contains(whole, kept)) << length;
        EXPECT_TRUE(Contains(kept, previous)) << length;
        previous = kept;
    }
    EXPECT_EQ(previous, whole);
}

TEST(ConfigDocument, AChangedByteLeavesWhatStandsBeforeIt) {
    constexpr std::string_view kBytes("\"'[](){}\\\0\n\r\t #/*;:=09tfA\x7F\x80\xFF", 28);
    const std::string& text = RepresentativeText();
    for (std::size_t position = 0; position < text.size(); position += SEALKEEPER_TEST_STEP) {
        const std::set<std::string> before = ParsedEntries(text.substr(0, position));
        for (const char byte : kBytes) {
            std::string changed = text;
            changed[position] = byte;
            EXPECT_TRUE(Contains(ParsedEntries(changed), before))
                << position << ": " << static_cast<int>(byte);
            // Only a line feed inside a list element makes parsing fail.
            ConfigDocument document;
            if (!document.ParseConfigText(changed)) {
                const bool opensElement = byte == '"' || byte == '[';
                EXPECT_TRUE(byte == '\n' || opensElement || text[position] == '"' ||
                            text[position] == ']')
                    << position << ": " << static_cast<int>(byte);
            }
        }
    }
}

TEST(ConfigDocument, AddsToWhatItHolds) {
    ConfigDocument document;
    EXPECT_TRUE(document.ParseConfigText("s {k=1; l=[\"a\"] p=(\"x\",\"1\") x=\"v\" }"));
    EXPECT_TRUE(document.ParseConfigText("t {k=3;}"));
    EXPECT_TRUE(
        document.ParseConfigText("S {K=2; L=[\"b\"] P=(\"x\",\"2\",\"y\",\"3\") X=\"w\" }"));
    EXPECT_FALSE(document.ParseConfigText(""));
    EXPECT_EQ(Dump(document), "s{k!true k=2 l[a|b] p(x>1|y>3) x'w'} t{k!true k=3}");
}

TEST(ConfigDocument, AnOpenSectionDoesNotReachIntoTheNextText) {
    ConfigDocument document;
    EXPECT_TRUE(document.ParseConfigText("s {k=1; l = "));
    EXPECT_TRUE(document.ParseConfigText("/* open "));
    EXPECT_TRUE(document.ParseConfigText("t {\"v\" 2;}"));
    EXPECT_EQ(Dump(document), "s{k!true k=1} t{\"v\"!true \"v\"=2}");
}

TEST(ConfigDocument, GetSectionLowerCasesItsArgument) {
    ConfigDocument document;
    ASSERT_TRUE(document.ParseConfigText("A { version = 2; }"));
    std::string name = "A";
    EXPECT_EQ(document.GetSection(name).integers.Get("version"), 2);
    EXPECT_EQ(name, "a");
    std::string missing = "MISSING\xC3\x84";
    EXPECT_FALSE(document.GetSection(missing).integers.Has("version"));
    EXPECT_EQ(missing, "missing\xC3\x84");
}

TEST(ConfigDocument, AMissingSectionIsEmptyAndNotCreated) {
    ConfigDocument document;
    std::string name = "missing";
    document.GetSection(name).integers.Get("version") = 2;
    document.GetSection(name).stringLists.Get("include_paths").push_back("a");
    EXPECT_FALSE(HasSection(document, "missing"));
    std::string other = "other";
    EXPECT_FALSE(document.GetSection(other).integers.Has("version"));
    EXPECT_FALSE(document.GetSection(other).stringLists.Has("include_paths"));
}

TEST(ConfigDocument, GetEntersTheDefaultOfAMissingKey) {
    ConfigSection section;
    EXPECT_FALSE(section.flags.Has("k"));
    EXPECT_FALSE(section.flags.Get("k"));
    EXPECT_EQ(section.integers.Get("k"), 0);
    EXPECT_EQ(section.strings.Get("k"), "");
    EXPECT_TRUE(section.stringLists.Get("k").empty());
    EXPECT_TRUE(section.stringPairTables.Get("k").empty());
    EXPECT_TRUE(section.flags.Has("k") && section.integers.Has("k") && section.strings.Has("k"));
    EXPECT_TRUE(section.stringLists.Has("k") && section.stringPairTables.Has("k"));
    EXPECT_FALSE(section.integers.Has("K"));
}

TEST(ConfigDocument, LooksKeysUpAsTheyAreGiven) {
    ConfigDocument document;
    ASSERT_TRUE(document.ParseConfigText("s {KEY=2;}"));
    std::string name = "s";
    EXPECT_TRUE(document.GetSection(name).integers.Has("key"));
    EXPECT_FALSE(document.GetSection(name).integers.Has("KEY"));
}

TEST(ConfigDocument, LoadsAFile) {
    const TempDirectory directory;
    const std::string path = directory.WriteFile("a.cfg", RepresentativeText());
    ConfigDocument document;
    EXPECT_TRUE(document.LoadConfigFile(path));
    EXPECT_EQ(Dump(document), kRepresentativeDump);
    ConfigDocument fromText;
    EXPECT_TRUE(fromText.LoadConfigFile(path.c_str()));
    EXPECT_EQ(Dump(fromText), kRepresentativeDump);
}

TEST(ConfigDocument, LoadsBytesAfterANul) {
    const TempDirectory directory;
    ConfigDocument document;
    EXPECT_TRUE(document.LoadConfigFile(
        directory.WriteFile("a.cfg", std::string("s {k=1;\0=2; l=3;}", 17))));
    EXPECT_EQ(Dump(document), "s{k!true k=1 l!true l=3}");
}

TEST(ConfigDocument, LoadsOneByteButNotAnEmptyFile) {
    const TempDirectory directory;
    ConfigDocument document;
    EXPECT_TRUE(document.LoadConfigFile(directory.WriteFile("one.cfg", "{")));
    EXPECT_FALSE(document.LoadConfigFile(directory.WriteFile("empty.cfg", "")));
    EXPECT_EQ(Dump(document), "");
}

TEST(ConfigDocument, LoadReportsALineFeedInAListElement) {
    const TempDirectory directory;
    ConfigDocument document;
    EXPECT_FALSE(
        document.LoadConfigFile(directory.WriteFile("a.cfg", "s {k=1; l=[\"a\nb\"] x=1;}")));
    EXPECT_EQ(Dump(document), "s{k!true k=1}");
}

TEST(ConfigDocument, LoadFailsWhereThereIsNoFileToRead) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    ConfigDocument document;
    EXPECT_FALSE(document.LoadConfigFile(""));
    EXPECT_FALSE(document.LoadConfigFile(std::string()));
    EXPECT_FALSE(document.LoadConfigFile(directory / "missing.cfg"));
    EXPECT_FALSE(document.LoadConfigFile(directory.Path()));
    EXPECT_FALSE(document.LoadConfigFile(directory / "fifo"));
}

}  // namespace
}  // namespace sealkeeper
