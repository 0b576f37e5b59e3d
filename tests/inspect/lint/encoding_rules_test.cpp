#include <gtest/gtest.h>

#include <string>

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
