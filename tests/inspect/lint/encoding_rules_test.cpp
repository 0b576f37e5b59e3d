#include <gtest/gtest.h>

#include <string>

#include "inspect/lint/lint_config_text.h"
#include "inspect/lint/lint_expectations.h"

namespace sealkeeper {
namespace {

using test::ExpectLinted;
using test::NoPathList;
using test::NoVersion;
using test::Told;
using test::WithSearchOptions;

constexpr const char* kSaveAsUtf8 = "Save the file as UTF-8 without a byte-order mark.";

// For ASCII only.
std::string AsUtf16(const std::string& text, bool isLittleEndian) {
    std::string units;
    for (const char byte : text) {
        units += isLittleEndian ? std::string({byte, '\0'}) : std::string({'\0', byte});
    }
    return units;
}

std::string AsUtf32(const std::string& text, bool isLittleEndian) {
    std::string units;
    for (const char byte : text) {
        const std::string zeros(3, '\0');
        units += isLittleEndian ? byte + zeros : zeros + byte;
    }
    return units;
}

std::string Repeated(const std::string& units) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += units;
    }
    return text;
}

TEST(LintEncoding, TellsOfAByteOrderMark) {
    const Told mark = {
        "The file begins with a byte-order mark, which becomes part of the first section's name, so that section is not recognised.",
        kSaveAsUtf8};
    ExpectLinted({
        {"before a name", "@\xEF\xBB\xBF" + WithSearchOptions(""), {NoVersion(), mark}, 1},
        {"before a comment", "@\xEF\xBB\xBF# c\n" + WithSearchOptions(""), {NoVersion(), mark}, 1},
    });
}

TEST(LintEncoding, TellsOfUtf16AndOfNothingElse) {
    const std::string text = WithSearchOptions("unknown = [];");
    const Told little = {"The file is UTF-16 (little-endian), in which the tool finds no names.",
                         kSaveAsUtf8};
    const Told big = {"The file is UTF-16 (big-endian), in which the tool finds no names.",
                      kSaveAsUtf8};
    ExpectLinted({
        {"little-endian with a mark", "@\xFF\xFE" + AsUtf16(text, true), {little}},
        {"big-endian with a mark", "@\xFE\xFF" + AsUtf16(text, false), {big}},
        {"little-endian", "@" + AsUtf16(text, true), {little}},
        {"big-endian", "@" + AsUtf16(text, false), {big}},
    });
}

TEST(LintEncoding, TellsUtf32ByItsMark) {
    const std::string text = WithSearchOptions("unknown = [];");
    ExpectLinted({
        {"little-endian",
         "@" + std::string("\xFF\xFE\0\0", 4) + AsUtf32(text, true),
         {{"The file is UTF-32 (little-endian), in which the tool finds no names.", kSaveAsUtf8}}},
        {"big-endian",
         "@" + std::string("\0\0\xFE\xFF", 4) + AsUtf32(text, false),
         {{"The file is UTF-32 (big-endian), in which the tool finds no names.", kSaveAsUtf8}}},
    });
}

// U+4E00, the number one, has a byte of zero on the other side of its units.
TEST(LintEncoding, TellsOfThemWithoutAMarkAfterALongCommentInAnotherScript) {
    const std::string text = "\n" + WithSearchOptions("unknown = [];");
    const auto told = [](const std::string& encoding) {
        return Told{"The file is " + encoding + ", in which the tool finds no names.", kSaveAsUtf8};
    };
    ExpectLinted({
        {"UTF-16 little-endian",
         "@" + AsUtf16("#", true) + Repeated(std::string("\0\x4E", 2)) + AsUtf16(text, true),
         {told("UTF-16 (little-endian)")}},
        {"UTF-16 big-endian",
         "@" + AsUtf16("#", false) + Repeated(std::string("\x4E\0", 2)) + AsUtf16(text, false),
         {told("UTF-16 (big-endian)")}},
        {"UTF-32 little-endian",
         "@" + AsUtf32("#", true) + Repeated(std::string("\0\x4E\0\0", 4)) + AsUtf32(text, true),
         {told("UTF-32 (little-endian)")}},
        {"UTF-32 big-endian",
         "@" + AsUtf32("#", false) + Repeated(std::string("\0\0\x4E\0", 4)) + AsUtf32(text, false),
         {told("UTF-32 (big-endian)")}},
    });
}

TEST(LintEncoding, TellsByTheMarkFirst) {
    // U+7B00 has the bytes of a brace in the other order.
    ExpectLinted(
        {{"big-endian with the brace of little-endian",
          "@\xFE\xFF" + AsUtf16("#", false) + std::string("\x7B\0", 2) +
              AsUtf16("\n" + WithSearchOptions(""), false),
          {{"The file is UTF-16 (big-endian), in which the tool finds no names.", kSaveAsUtf8}}}});
}

TEST(LintEncoding, TellsOfThemWithoutAMarkByOtherBracesToo) {
    // U+7B49 has the byte of a brace and no zero.
    ExpectLinted({{"little-endian",
                   "@" + AsUtf16("#", true) + "\x49\x7B\x49\x7B" +
                       AsUtf16("\n" + WithSearchOptions(""), true),
                   {{"The file is UTF-16 (little-endian), in which the tool finds no names.",
                     kSaveAsUtf8}}}});
}

TEST(LintEncoding, ZerosAfterABraceAreNoUtf32) {
    const std::string text = "config_info { version = 2; }\nSearch_Options {";
    for (const std::string& zeros : {std::string(1, '\0'), std::string(16, '\0')}) {
        for (const RuleWarning& warning : LintConfigText(text + zeros)) {
            EXPECT_EQ(warning.message.find("UTF-"), std::string::npos) << warning.message;
        }
    }
}

TEST(LintEncoding, ZeroByteAloneIsNoUtf16) {
    const std::string name("a\0b", 3);
    test::ExpectNothingTold({WithSearchOptions("exclude_extensions = [\"." + name + "\"]")});
}

TEST(LintEncoding, TellsOfAnEmptyFile) {
    ExpectLinted({{"empty",
                   "",
                   {{"The file is empty, and the tool refuses an empty one.",
                     "Write the sections config_info and search_options."}},
                   1},
                  {"one byte", "x", {NoVersion(), NoPathList()}, 2},
                  {"comments alone", "# x\n/* y */\n", {NoVersion(), NoPathList()}, 2}});
}

}  // namespace
}  // namespace sealkeeper
