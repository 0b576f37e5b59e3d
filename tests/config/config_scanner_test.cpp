#include "config/config_scanner.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "config/config_dump.h"

namespace sealkeeper {
namespace {

using test::ParsedDump;

struct ScanCase {
    const char* name;
    std::string text;
    // In the format of `ParsedDump`.
    std::string expected;
};

void ExpectScans(const std::vector<ScanCase>& cases) {
    for (const ScanCase& scan : cases) {
        EXPECT_EQ(ParsedDump(scan.text), scan.expected) << scan.name << ": " << scan.text;
    }
}

TEST(ConfigScanner, SingleByteHoldsNothing) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(ParsedDump(std::string(1, static_cast<char>(byte))), "") << byte;
    }
}

TEST(ConfigScanner, LastByteNeverStartsAToken) {
    ExpectScans({
        {"number of one digit", "s {k=5", "s{}"},
        {"number of one digit after skipped bytes", "s {k=; ;5", "s{}"},
        {"number of one digit after a comment", "s {k=/**/ 5", "s{}"},
        {"number of two digits", "s {k=12", "s{k!true}"},
        {"number of two digits that begins with zero", "s {k=02", "s{k!false}"},
        {"last byte ends a number", "s {k=5;", "s{k!true k=5}"},
        {"last byte ends a string", "s {k=\"v\"", "s{k'v'}"},
        {"last byte ends a list", "s {k=[\"v\"]", "s{k[v]}"},
        {"last byte ends a pair table", "s {k=(\"v\",\"w\")", "s{k(v>w)}"},
        {"last byte opens the body", "s {", "s{}"},
    });
}

TEST(ConfigScanner, SkipsBlanksAndSemicolons) {
    ExpectScans({
        {"before the header", " \t\r;; s {k=1;}", "s{k!true k=1}"},
        {"between entries", "s {;; k=1; ;\t;\r;l=2;;;}", "s{k!true k=1 l!true l=2}"},
        {"line feeds", "\n\ns\n{\n\nk=1;\n\n}\n", "s{k!true k=1}"},
        {"only blanks", "  \t\t;;\r\r  ", ""},
        {"a vertical tab is no blank", "\vs {k=1;}", "\vs{k!true k=1}"},
    });
}

TEST(ConfigScanner, Comments) {
    ExpectScans({
        {"hash", "# c {\ns {k=1;}", "s{k!true k=1}"},
        {"slashes", "// c {\ns {k=1;}", "s{k!true k=1}"},
        {"block", "/* c {\n\n c */s {k=1;}", "s{k!true k=1}"},
        {"inside a section", "s {#c\nk=1;//d\nl=2;/*\n*/}", "s{k!true k=1 l!true l=2}"},
        {"hash right after an entry", "s {k=1;#l=2;\n}", "s{k!true k=1}"},
        {"between key and value", "s {k = # c\n5; l = // c\n6; p = /* c\n */7;}",
         "s{k!true k=5 l!true l=6 p!true p=7}"},
        {"not inside a string", "s {k=\"a//b#c/*d\" l=1;}", "s{k'a//b#c/*d' l!true l=1}"},
        {"not inside a list", "s {k=[\"a//b\",#\"c\"] l=1;}", "s{k[a//b|c] l!true l=1}"},
        {"not inside a key", "s {k//c=1;}", "s{k//c!true k//c=1}"},
        {"carriage return does not end one", "# c\rs {x=1;}", ""},
        {"unclosed block", "s {k=1;/* l=2;\n}", "s{k!true k=1}"},
        {"marker at the end", "s {k=1;//", "s{k!true k=1}"},
        {"a single slash starts a key", "s {/x=1;}", "s{/x!true /x=1}"},
    });
}

TEST(ConfigScanner, CommentMarkersInsideComments) {
    ExpectScans({
        {"block in a hash comment", "# a /* b\ns {x=1;}\n*/ s {k=1;}", "s{k!true k=1}"},
        {"block in a slash comment", "// a /* b\ns {x=1;}\n*/ s {k=1;}", "s{k!true k=1}"},
        {"end of block in a line comment", "# */ t {x=1;}\ns {k=1;}", "s{k!true k=1}"},
        {"end of block on its own is a name", "*/ {k=1;}", "*/{k!true k=1}"},
        {"hash in a block", "/* # */s {k=1;}", "s{k!true k=1}"},
        {"slashes in a block", "/* // */s {k=1;}", "s{k!true k=1}"},
        {"slashes right before the end of a block", "/*//*/s {k=1;}", "s{k!true k=1}"},
        {"three slashes hide the end of a block", "/*///*/s {k=1;}", ""},
        {"the opening star does not close", "/*/ s {x=1;} */t {k=1;}", "t{k!true k=1}"},
        {"block of a star", "/***/s {k=1;}", "s{k!true k=1}"},
        {"blocks do not nest", "/* /* */s {k=1;}", "s{k!true k=1}"},
        {"end of a block ends the line comment in it", "/* # */s {k=1;}\n", "s{k!true k=1}"},
        {"block opened in a line comment, closed on that line", "# /* */s {k=1;}", "s{k!true k=1}"},
    });
}

TEST(ConfigScanner, SectionHeaders) {
    ExpectScans({
        {"blank", "s {k=1;}", "s{k!true k=1}"},
        {"tab", "s\t{k=1;}", "s{k!true k=1}"},
        {"line feed", "s\n{k=1;}", "s{k!true k=1}"},
        {"carriage return", "s\r{k=1;}", "s{k!true k=1}"},
        {"colon", "s:{k=1;}", "s{k!true k=1}"},
        {"anything before the brace", "s : x }=\"#//\n words {k=1;}", "s{k!true k=1}"},
        {"upper case", "S {k=1;}", "s{k!true k=1}"},
        {"only ASCII is lower-cased", "\xC3\x84S {k=1;}", "\xC3\x84s{k!true k=1}"},
        {"brace without a blank belongs to the name", "A{ b {k=1;}", "a{{k!true k=1}"},
        {"begins with a colon", "t {k=1;} :s {k=1;}", "t{k!true k=1}"},
        {"name to the end", "t {k=1;} sssss", "t{k!true k=1}"},
        {"no brace leaves an empty section", "s x", "s{}"},
        {"only brace is part of the name", "s{ k=1;}", "s{{}"},
        {"two sections", "s {k=1;} t {l=2;}", "s{k!true k=1} t{l!true l=2}"},
        {"same name again", "s {k=1;} S {l=2;}", "s{k!true k=1 l!true l=2}"},
        {"later header without a body", "s {k=1;} t", "s{k!true k=1}"},
    });
}

TEST(ConfigScanner, SectionEnds) {
    ExpectScans({
        {"unclosed section keeps its entries", "s {k=1; l=2; ", "s{k!true k=1 l!true l=2}"},
        {"key waits for its value in the next section", "s {k = } t {\"v\" l=1;}",
         "s{} t{k'v' l!true l=1}"},
        {"second closing brace is a name", "s {}} {k=1;}", "s{} }{k!true k=1}"},
        {"nested header ends the scan", "s {k=1; t {l=1;}} t {x=1;}", "s{k!true k=1}"},
    });
}

TEST(ConfigScanner, Keys) {
    ExpectScans({
        {"blanks and equals sign", "s {k = 1;}", "s{k!true k=1}"},
        {"equals sign", "s {k=1;}", "s{k!true k=1}"},
        {"blank", "s {k 1;}", "s{k!true k=1}"},
        {"next line", "s {k\n=\n1;}", "s{k!true k=1}"},
        {"carriage return", "s {k\r\n1;}", "s{k!true k=1}"},
        {"several equals signs", "s {k ==\t= = 1;}", "s{k!true k=1}"},
        {"upper case", "s {K=1;}", "s{k!true k=1}"},
        {"only ASCII is lower-cased", "s {K\xC3\x84=1;}", "s{k\xC3\x84!true k\xC3\x84=1}"},
        {"begins with an equals sign", "s {k=1; =l=2;}", "s{k!true k=1}"},
        {"to the end of the text", "s {k=1; lll", "s{k!true k=1}"},
        {"no value", "s {k=1; l = \n\t\r= ", "s{k!true k=1}"},
        {"semicolon inside", "s {k;=1;}", "s{k;!true k;=1}"},
        {"colon inside", "s {k:=1;}", "s{k:!true k:=1}"},
        {"bracket", "s {[=1;}", "s{[!true [=1}"},
    });
}

TEST(ConfigScanner, OneKeyInEveryTable) {
    EXPECT_EQ(ParsedDump("s {k=5; k=\"v\" k=false k=[\"a\"] k=(\"x\",\"1\") }"),
              "s{k!false k=5 k'v' k[a] k(x>1)}");
}

TEST(ConfigScanner, ScanEndsAtWhatDoesNotFitWhateverFollows) {
    const std::vector<std::string> prefixes = {
        "s {k=1;} :",       "s {k=1; =",          "s {k=1; l=[]",       "s {k=1; l=()",
        "s {k=1; l=yes ",   "s {k=1; l=truf ",    "s {k=1; l=falsy ",   "s {k=1; l=-5;",
        "s {k=1; l={x=1;}", "s {k=1; l='a'     ", "s {k=1; l=\xFF     "};
    const std::vector<std::string> suffixes = {"}",
                                               " x=1; }",
                                               "\n} t {x=1;}",
                                               "\"\"",
                                               "]])))\"",
                                               "*/",
                                               std::string(3, '\0'),
                                               "true",
                                               std::string(5000, '{'),
                                               "; x=[\"a\nb\"]"};
    for (const std::string& prefix : prefixes) {
        for (const std::string& suffix : suffixes) {
            EXPECT_EQ(ParsedDump(prefix + suffix), "s{k!true k=1}") << prefix << suffix;
        }
    }
}

TEST(ConfigScanner, ScansTheDocumentedExample) {
    EXPECT_EQ(ParsedDump("# catalogue configuration\n"
                         "config_info {\n"
                         "    version = 2;\n"
                         "}\n"
                         "search_options {\n"
                         "    words = [\"*.exe\", \"bin/*.dylib\"]   // line comment\n"
                         "    other = [\".pdb\", \".log\"]\n"
                         "    number = 1024;\n"
                         "    off = false\n"
                         "    /* block\n"
                         "       comment */\n"
                         "    pairs = ( [\"Binaries/Mac\", \"bin\"], [\"Content\", \"data\"] );\n"
                         "}\n"),
              "config_info{version!true version=2} "
              "search_options{words[*.exe|bin/*.dylib] pairs(Binaries/Mac>bin|Content>data) "
              "number!true number=1024 off!false other[.pdb|.log]}");
}

TEST(ConfigScanner, LongInputsTakeLinearTime) {
    // Each of these would take minutes if any token looked at the whole text again.
    constexpr std::size_t kRepetitions = 200'000;
    std::string sections;
    std::string comments = "s {k=1;";
    std::string lists = "s {";
    std::string blanks = "s {k=1;";
    for (std::size_t i = 0; i < kRepetitions; ++i) {
        sections += "t {x=1;} ";
        comments += "/*#//*/";
        lists += "l=[\"\"] ";
        blanks += "\n;";
    }
    EXPECT_EQ(ParsedDump(sections), "t{x!true x=1}");
    EXPECT_EQ(ParsedDump(comments), "s{k!true k=1}");
    EXPECT_EQ(ParsedDump(lists), "s{l[]}");
    EXPECT_EQ(ParsedDump(blanks), "s{k!true k=1}");
    EXPECT_EQ(ParsedDump("s {k=\"" + std::string(2'000'000, '\\') + "\"}"), "s{k'\\'}");
}

}  // namespace
}  // namespace sealkeeper
