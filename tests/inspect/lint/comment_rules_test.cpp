#include <gtest/gtest.h>

#include "inspect/lint/lint_expectations.h"

namespace sealkeeper {
namespace {

using test::EndsAfter;
using test::ExpectLinted;
using test::ExpectNothingTold;
using test::NoPathList;
using test::NoVersion;
using test::WithSearchOptions;

constexpr const char* kBlockCure = "Write the '/*' in this comment with a blank between its signs.";

TEST(LintComments, TellsOfABlockThatALineCommentOpens) {
    ExpectLinted({
        {"up to the end of another comment",
         "# see https://host@/* for more\n" + WithSearchOptions("") + "/* b */\n" +
             WithSearchOptions(""),
         {{"The '/*' in this line comment opens a block comment, which hides all up to the '*/' on line 7.",
           kBlockCure}}},
        {"up to one with text after it",
         "// keep Logs@/*.txt\n" + WithSearchOptions("") + "// b @*/ @c\n",
         {NoVersion(),
          NoPathList(),
          {"The '/*' in this line comment opens a block comment, which hides all up to the '*/' on line 7.",
           kBlockCure},
          {"The '*/' ends this line comment, so what follows it on the line is read.",
           "Remove the '*/', or what follows it."},
          EndsAfter(7, 7)},
         2},
        {"to the end of the file",
         WithSearchOptions("# keep Logs@/*\nexclude_extensions = [\".a\"]"),
         {{"The '/*' in this line comment opens a block comment without an end, so everything from line 5 on is ignored.",
           kBlockCure}}},
        {"and ends on its line",
         WithSearchOptions("# keep /* a @*/ exclude_size_threshold"),
         {{"The '*/' ends this line comment, so what follows it on the line is read.",
           "Remove the '*/', or what follows it."}}},
    });
}

TEST(LintComments, TellsOfABlockWithoutAnEnd) {
    ExpectLinted(
        {{"to the end of the file",
          WithSearchOptions("") + "@/* b\n}\n",
          {{"The comment that begins here has no end, so everything from line 6 on is ignored.",
            "Write '*/' at its end."}}}});
}

TEST(LintComments, TellsOfAnEndThatIsNone) {
    ExpectLinted({
        {"it shares its star",
         "/* a /@*/\n" + WithSearchOptions("") + "/* b */\n",
         {NoVersion(),
          NoPathList(),
          {"This '*/' does not end the comment, since its star belongs to the '/*' before it.",
           "Write a blank before the '*/'."}},
         2},
        {"without a comment",
         WithSearchOptions("") + "@*/\n",
         {{"This '*/' ends no comment and is read as a name, so everything from line 6 on is ignored.",
           "Remove it."}}},
        {"without a comment, in a section",
         WithSearchOptions("@*/ @ignore_files_without_extension = 1;"),
         {{"This '*/' ends no comment and is read as a name, so it is ignored.", "Remove it."},
          EndsAfter(4, 4)}},
    });
}

TEST(LintComments, TellsOfACarriageReturnAlone) {
    ExpectLinted(
        {{"old line ends",
          "# a@\rconfig_info { version = 2; }\r",
          {NoVersion(),
           NoPathList(),
           {"A carriage return alone ends no line, so what follows it is still part of the comment.",
            "Save the file with line feeds at the ends of its lines."}},
          2}});
}

TEST(LintComments, TellsOfAMarkInsideAName) {
    ExpectLinted({
        {"of a key",
         WithSearchOptions("@ignore_files_without_extension//x = 1;"),
         {{"The comment mark in 'ignore_files_without_extension//x' is read as a part of the name, so it is ignored.",
           "Write a blank before the comment."}}},
        {"of a section",
         WithSearchOptions("") + "@runtime_configuration# {\n}\n@{ }\n",
         {{"The comment mark in 'runtime_configuration#' is read as a part of the name, so everything in the braces that follow is ignored.",
           "Write a blank before the comment."},
          EndsAfter(6, 8)}},
    });
}

TEST(LintComments, TellsOfACommentBeforeTheEqualsSign) {
    ExpectLinted(
        {{"line comment",
          WithSearchOptions("ignore_files_without_extension # x\n@= 1;"),
          {{"The '=' of 'ignore_files_without_extension' stands after a comment, where its value is expected, so everything from line 5 on is ignored.",
            "Write the key and '=' on one line without a comment between them."}}}});
}

TEST(LintComments, HarmlessOnes) {
    ExpectNothingTold({
        "# keep /* a */ # search\n" + WithSearchOptions(""),
        "// a /* b */\n" + WithSearchOptions("") + "# */ c\n",
        "/* # // */\n" + WithSearchOptions("/**/ /*/ x */ exclude_size_threshold = // x\n 100;"),
        "# a\r\n" + WithSearchOptions("") + "# the end, with a /*",
        "//////////////\n//* a *\n" + WithSearchOptions("# 'don't' \"know"),
        "/* a Content/*/Paks */\n" + WithSearchOptions(""),
    });
}

}  // namespace
}  // namespace sealkeeper
