#include "config/config_values.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "config/config_dump.h"

namespace sealkeeper {
namespace {

using test::ParsedDump;

struct ValueCase {
    const char* name;
    std::string text;
    // In the format of `ParsedDump`.
    std::string expected;
};

void ExpectValues(const std::vector<ValueCase>& cases) {
    for (const ValueCase& value : cases) {
        EXPECT_EQ(ParsedDump(value.text), value.expected) << value.name << ": " << value.text;
    }
}

TEST(ConfigValues, StringLists) {
    ExpectValues({
        {"two elements", "s {l=[\"a\",\"b\"] }", "s{l[a|b]}"},
        {"no separators needed", "s {l=[\"a\"\"b\" x \"c\"\n\"d\"] }", "s{l[a|b|c|d]}"},
        {"empty element", "s {l=[\"a\", \"\", \"b\"] }", "s{l[a|b]}"},
        {"only blanks", "s {l=[ ] k=1;}", "s{k!true k=1 l[]}"},
        {"no quotes", "s {l=[a, b] k=1;}", "s{k!true k=1 l[]}"},
        {"nothing ends the scan", "s {l=[] k=1;}", "s{}"},
        {"no closing bracket", "s {l=[\"a\",\"b\" k=1;}", "s{}"},
        {"repeated key accumulates", "s {l=[\"a\"] l=[\"b\"] }", "s{l[a|b]}"},
        {"repeated section accumulates", "s {l=[\"a\"]} s {L=[\"b\"]} ", "s{l[a|b]}"},
        {"repetition is kept", "s {l=[\"a\",\"a\"] l=[\"a\"] }", "s{l[a|a|a]}"},
        {"quote at the end", "s {l=[\"a\"b\"] k=1;}", "s{k!true k=1 l[a]}"},
        {"unclosed element", "s {l=[\"a\",\"b] k=1;}", "s{k!true k=1 l[a]}"},
        {"bracket in an element ends the list", "s {l=[\"a]b\"] k=1; x=2;}", "s{l[]}"},
        {"backslashes", "s {l=[\"a\\b\\\\c\\\\\\\\d\"] }", "s{l[a\\b\\c\\d]}"},
        {"only backslashes", "s {l=[\"\\\\\\\\\\\\\"] }", "s{l[\\]}"},
        {"carriage return", "s {l=[\"a\rb\"] }", "s{l[a\rb]}"},
    });
}

TEST(ConfigValues, LineFeedInAListElementFailsTheParse) {
    ExpectValues({
        {"alone", "s {l=[\"a\nb\"] }", "false: s{}"},
        {"entries before it are kept", "s {k=1; l=[\"a\", \"\n\"] x=1;}", "false: s{k!true k=1}"},
        {"earlier list is kept", "s {l=[\"a\"] l=[\"b\n\"] }", "false: s{l[a]}"},
        {"element without its closing quote is none", "s {l=[\"a\", \"b\n] k=1;}",
         "s{k!true k=1 l[a]}"},
        {"between elements", "s {l=[\n\"a\"\n,\n\"b\"\n] }", "s{l[a|b]}"},
    });
}

TEST(ConfigValues, PairTables) {
    ExpectValues({
        {"pairs in brackets", "s {p = ( [\"x\", \"1\"], [\"y\", \"2\"] );}", "s{p(x>1|y>2)}"},
        {"brackets are not needed", "s {p=(\"y\"\"2\"\"x\"\"1\") }", "s{p(x>1|y>2)}"},
        {"first value of a name is kept", "s {p = ( [\"x\", \"1\"], [\"x\", \"2\"] ) }",
         "s{p(x>1)}"},
        {"repeated key merges", "s {p=(\"x\",\"1\") p=(\"x\",\"2\",\"y\",\"3\") }",
         "s{p(x>1|y>3)}"},
        {"nothing ends the scan", "s {p=() k=1;}", "s{}"},
        {"only blanks", "s {p=( ) k=1;}", "s{k!true k=1 p()}"},
        {"no closing parenthesis", "s {p=(\"x\",\"1\" k=1;}", "s{}"},
        {"empty name ends the table", "s {p=(\"w\",\"0\",\"\",\"1\",\"y\",\"2\") k=1;}",
         "s{k!true k=1 p(w>0)}"},
        {"empty value ends the table", "s {p=(\"w\",\"0\",\"x\",\"\",\"y\",\"2\") k=1;}",
         "s{k!true k=1 p(w>0)}"},
        {"name without a value", "s {p=(\"x\",\"1\",\"y\") k=1;}", "s{k!true k=1 p(x>1)}"},
        {"unclosed name", "s {p=(\"x\",\"1\",\"y) k=1;}", "s{k!true k=1 p(x>1)}"},
        {"unclosed value", "s {p=(\"x\",\"1\",\"y\",\"2) k=1;}", "s{k!true k=1 p(x>1)}"},
        {"line feeds are allowed", "s {p=(\"x\n\",\"\n1\") }", "s{p(x\n>\n1)}"},
        {"parenthesis in a name ends the table", "s {p=(\"a)b\",\"1\") k=1; }", "s{p()}"},
        {"backslashes", "s {p=(\"a\\\\b\",\"c\\\\\\\\d\") }", "s{p(a\\b>c\\d)}"},
        {"names alike after the backslashes", "s {p=(\"a\\\\b\",\"1\",\"a\\b\",\"2\") }",
         "s{p(a\\b>1)}"},
    });
}

TEST(ConfigValues, Strings) {
    ExpectValues({
        {"plain", "s {k=\"v\" }", "s{k'v'}"},
        {"empty", "s {k=\"\" l=\"x\" }", "s{k'' l'x'}"},
        {"replaced", "s {k=\"v\" k=\"w\" }", "s{k'w'}"},
        {"line feed", "s {k=\"a\nb\" }", "s{k'a\nb'}"},
        {"no closing quote", "s {l=1; k=\"v }", "s{l!true l=1}"},
        {"backslash does not escape a quote", "s {k=\"a\\\"b\" }", "s{k'a\\'}"},
        {"two backslashes", "s {k=\"C:\\\\dir\" }", "s{k'C:\\dir'}"},
        {"three backslashes", "s {k=\"C:\\\\\\dir\" }", "s{k'C:\\dir'}"},
        {"four backslashes", "s {k=\"C:\\\\\\\\dir\" }", "s{k'C:\\dir'}"},
        {"single backslash", "s {k=\"C:\\dir\\n\" }", "s{k'C:\\dir\\n'}"},
        {"bytes that are no text", std::string("s {k=\"\0\xFF\" }", 10),
         std::string("s{k'\0\xFF'}", 8)},
    });
}

TEST(ConfigValues, Numbers) {
    ExpectValues({
        {"five", "s {k = 5;}", "s{k!true k=5}"},
        {"zero", "s {k = 0;}", "s{k!false k=0}"},
        {"leading zeros", "s {k = 007;}", "s{k!false k=7}"},
        {"letters after it", "s {k = 12abc;}", "s{k!true k=12}"},
        {"point", "s {k = 1.5;}", "s{k!true k=1}"},
        {"blank inside", "s {k = 1 000;}", "s{k!true k=1}"},
        {"hexadecimal", "s {k = 0x10;}", "s{k!false k=0}"},
        {"sign", "s {k = -5; l=1;}", "s{}"},
        {"largest", "s {k = 2147483647;}", "s{k!true k=2147483647}"},
        {"turns negative", "s {k = 2147483648;}", "s{k!true k=-2147483648}"},
        {"all bits", "s {k = 4294967295;}", "s{k!true k=-1}"},
        {"wraps to zero", "s {k = 4294967296;}", "s{k!true k=0}"},
        {"wraps", "s {k = 4294967297;}", "s{k!true k=1}"},
        {"many digits", "s {k = 1" + std::string(1000, '0') + "7;}", "s{k!true k=7}"},
        {"replaced", "s {k=0; k=5;}", "s{k!true k=5}"},
        {"no semicolon", "s {k=5 }", "s{k!true}"},
        {"no semicolon keeps the earlier integer", "s {k=5; k=0 }", "s{k!false k=5}"},
        {"reaches for the next semicolon", "s {k=5 }\nt {l=6; x=7;}", "s{k!true k=5 x!true x=7}"},
    });
}

TEST(ConfigValues, Words) {
    ExpectValues({
        {"true", "s {k=true l=1;}", "s{k!true l!true l=1}"},
        {"false", "s {k=false l=1;}", "s{k!false l!true l=1}"},
        {"any case", "s {k=TRUE l=tRuE p=FALSE x=fAlSe }", "s{k!true l!true p!false x!false}"},
        {"replaced", "s {k=true k=false }", "s{k!false}"},
        {"replaces a number's flag", "s {k=5; k=false }", "s{k!false k=5}"},
        {"byte after true is passed over", "s {k=true}l=1;}", "s{k!true l!true l=1}"},
        {"byte after false is passed over", "s {k=false}l=1;}", "s{k!false l!true l=1}"},
        {"letter after true is passed over", "s {k=truek=1;}", "s{k!true}"},
        {"line comment marker after true is split", "s {k=true#l=1;\n}", "s{k!true l!true l=1}"},
        {"true ends the text", "s {k=true", "s{k!true}"},
        {"false ends the text", "s {k=false", "s{k!false}"},
        {"true cut", "s {k=tru", "s{}"},
        {"false cut", "s {k=fals", "s{}"},
        {"another word", "s {k=yes; l=1;}", "s{}"},
    });
}

TEST(ConfigValues, NumbersWithoutTheScanner) {
    EXPECT_EQ(ParseNumber(""), 0);
    EXPECT_EQ(ParseNumber("abc"), 0);
    EXPECT_EQ(ParseNumber("12"), 12);
    EXPECT_EQ(ParseNumber("3000000000"), std::int64_t{-1294967296});
}

TEST(ConfigValues, UnescapeCollapsesEveryRunOfBackslashes) {
    EXPECT_EQ(UnescapeBackslashes(""), "");
    EXPECT_EQ(UnescapeBackslashes("abc"), "abc");
    EXPECT_EQ(UnescapeBackslashes("aabb"), "aabb");
    for (std::size_t run = 1; run <= 20; ++run) {
        const std::string backslashes(run, '\\');
        EXPECT_EQ(UnescapeBackslashes(backslashes + "a" + backslashes), "\\a\\") << run;
    }
}

}  // namespace
}  // namespace sealkeeper
