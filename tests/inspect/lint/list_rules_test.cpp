// Lists and tables of pairs: where they end, and which of their elements are read.
#include <gtest/gtest.h>

#include "inspect/lint/lint_expectations.h"

namespace sealkeeper {
namespace {

using test::EndsAfter;
using test::ExpectLinted;
using test::ExpectNothingTold;
using test::HashesEverything;
using test::NoPathList;
using test::Told;
using test::WithOnlySearchOptions;
using test::WithSearchOptions;

constexpr const char* kQuoteBothSides = "Write a double quote on both sides of each element.";

Told BareWord(const std::string& word) {
    return {"'" + word + "' is not in double quotes and is left out.",
            "Write it in double quotes, or remove it."};
}

TEST(LintListEnds, TellsOfABracketInQuotes) {
    const Told bracket = {
        "The ']' ends 'include_paths' even inside quotes, so this element and all after it are lost.",
        "Write '?' in place of each bracket, which stands for any one character."};
    ExpectLinted({
        {"in the first element, which turns the list into one of nothing",
         WithOnlySearchOptions("include_paths = @[\"Level[1@].pak\", \"b\"]\n"
                               "@exclude_extensions = [\".a\"]"),
         {HashesEverything(), bracket, EndsAfter(2, 3)}},
        {"in the last element",
         WithOnlySearchOptions("include_paths = [\"a\", \"Level[1@].pak\"]"),
         {bracket}},
        {"in a pattern of what to exclude",
         "config_info { version = 2; }\nsearch_options { exclude_paths = [\"a\", \"log[1@].txt\"] }\n",
         {{"The ']' ends 'exclude_paths' even inside quotes, so this element and all after it are lost.",
           "Write '?' in place of each bracket, which stands for any one character. See that no other file fits: it would be left out, too."}}},
        {"of an extension",
         WithSearchOptions("exclude_extensions = [\".a@]\"]"),
         {{"The ']' ends 'exclude_extensions' even inside quotes, so this element and all after it are lost.",
           "Write it without the ']', which cannot be part of it."}}},
    });
}

TEST(LintListEnds, TellsOfAParenthesisInQuotes) {
    ExpectLinted(
        {{"of a pair",
          WithSearchOptions("alias_paths = ( [\"Program (x86@)\", \"p\"] @);"),
          {{"The ')' ends 'alias_paths' even inside quotes, so this element and all after it are lost.",
            "Write it without the ')', which cannot be part of it."},
           EndsAfter(4, 4)}}});
}

TEST(LintListEnds, TellsOfAnOddNumberOfQuotes) {
    const Told quote = {
        "The double quote here has no partner before the end of 'include_paths', so what follows it is left out.",
        kQuoteBothSides};
    ExpectLinted({
        {"last element", WithOnlySearchOptions("include_paths = [\"a\", @\"b]"), {quote}},
        {"first element",
         WithOnlySearchOptions("include_paths = [\"a, \"@b@\"]"),
         {BareWord("b"), quote}},
    });
}

TEST(LintListEnds, TellsOfABracketInAComment) {
    ExpectLinted({
        {"with elements after it",
         WithOnlySearchOptions("include_paths = [\"a\", // see [1@]\n\"b\"]\n@exclude_extensions = "
                               "[\".a\"]"),
         {{"The ']' in this comment ends 'include_paths'.",
           "Keep brackets out of comments between elements."},
          EndsAfter(2, 4)}},
    });
}

TEST(LintListEnds, TellsOfAListWithoutItsBracket) {
    ExpectLinted({
        {"that finds the next list's",
         WithOnlySearchOptions("include_paths = [\"a\"\n@exclude_extensions = [\".b\"]"),
         {{"There is no ']' before this, so it and all up to the next ']' are taken for a part of 'include_paths'.",
           "Write ']' after the last element of 'include_paths'."}}},
        {"that finds none",
         "config_info { version = 2; }\n@search_options { include_paths = @[\"a\" }\n",
         {NoPathList(),
          {"The list of 'include_paths' has no ']' at its end, so everything from line 2 on is ignored.",
           "Write ']' after its last element."}}},
        {"of pairs that finds none",
         WithSearchOptions("alias_paths = @( [\"a\", \"b\"]"),
         {{"The pairs of 'alias_paths' have no ')' at their end, so everything from line 4 on is ignored.",
           "Write ')' after the last pair."}}},
    });
}

TEST(LintListEnds, TellsOfALineBreakInAnElement) {
    ExpectLinted({
        {"for want of a quote",
         WithOnlySearchOptions("include_paths = [\"a\", @\"b,\n\"c\"]"),
         {{"The double quote here has no partner on its line, and the tool refuses a file with a line break inside an element.",
           kQuoteBothSides}}},
        {"for a quote in a comment",
         WithOnlySearchOptions("include_paths = [\"a\", // the @\"b\n\"c\"]"),
         {{"The double quote in this comment begins an element, and the tool refuses a file with a line break inside an element.",
           "Keep quotes out of comments between elements."}}},
    });
}

TEST(LintListEnds, TellsOfEmptyBrackets) {
    ExpectLinted({
        {"include_paths",
         "config_info { version = 2; }\n@search_options { include_paths = @[]\n}\n",
         {NoPathList(),
          {"The empty list of 'include_paths' ends the reading, so everything from line 2 on is ignored.",
           "Write its elements, or remove 'include_paths'."}}},
        {"exclude_paths",
         "config_info { version = 2; }\n@search_options { exclude_paths = @[]\n}\n",
         {NoPathList(),
          {"The empty list of 'exclude_paths' ends the reading, so everything from line 2 on is ignored.",
           "Write [ ] with a blank between the brackets if nothing is to be excluded."}}},
        {"pairs",
         WithSearchOptions("alias_paths = @();"),
         {{"The empty table of 'alias_paths' ends the reading, so everything from line 4 on is ignored.",
           "Write its pairs, or remove 'alias_paths'."}}},
    });
}

TEST(LintElements, TellsOfElementsThatLookCommentedOut) {
    const auto taken = [](const std::string& element) {
        return Told{"'" + element +
                        "' looks commented out, but is taken: there are no comments between "
                        "brackets.",
                    "Remove it, or its quotes."};
    };
    ExpectLinted({
        {"in all kinds of comments",
         WithOnlySearchOptions(
             "include_paths = [\"a\", // @\"b\"\n# @\"c\"\n/* \n @\"d\" */ \"e\"]"),
         {taken("b"), taken("c"), taken("d")}},
        {"a pair",
         WithSearchOptions("alias_paths = (\n# [@\"a\", \"b\"]\n[\"c\", \"d\"] );"),
         {taken("a")}},
    });
}

TEST(LintElements, MarksInsideQuotesCommentNothingOut) {
    ExpectNothingTold({
        WithOnlySearchOptions("include_paths = [\"a#b\", \"Content/*\", \"*/c\"]\n"
                              "exclude_extensions = [\".#a\"]"),
        WithOnlySearchOptions("include_paths = [\"a\", # first\n\"b\" // second, with ; and '\n"
                              "/* and more */ ]"),
        test::WithRuntime("crash_reporter_name = \"http://host/* # x\""),
    });
}

TEST(LintElements, TellsOfWrongQuotes) {
    const Told quotes = {"Text in other quotes than straight double ones is left out.",
                         "Write each element in straight double quotes, as in \"Content\"."};
    ExpectLinted({
        {"single",
         WithOnlySearchOptions("include_paths = @[@'a', 'b']"),
         {HashesEverything(), quotes}},
        {"typographic",
         WithOnlySearchOptions("include_paths = @[@\xE2\x80\x9C"
                               "a\xE2\x80\x9D]"),
         {HashesEverything(), quotes}},
        {"low",
         WithOnlySearchOptions("include_paths = @[@\xE2\x80\x9E"
                               "a\xE2\x80\x9C]"),
         {HashesEverything(), quotes}},
        {"angle",
         WithOnlySearchOptions("include_paths = @[@\xC2\xAB"
                               "a\xC2\xBB]"),
         {HashesEverything(), quotes}},
        {"backtick", WithSearchOptions("exclude_extensions = [\".a\", @`.b`]"), {quotes}},
        {"of a pair",
         WithSearchOptions("alias_paths = ( [@'a', 'b'], [\"c\", \"d\"] );"),
         {quotes}},
    });
}

TEST(LintElements, TellsOfWordsWithoutQuotes) {
    ExpectLinted({
        {"all",
         WithOnlySearchOptions("include_paths = @[@a, b]"),
         {HashesEverything(), BareWord("a")}},
        {"one of each gap",
         WithOnlySearchOptions("include_paths = [@a, \"b\" @c\"d\"]"),
         {BareWord("a"), BareWord("c")}},
        {"of pairs", WithSearchOptions("alias_paths = ( @a \"b\", \"c\" );"), {BareWord("a")}},
    });
}

TEST(LintElements, TellsOfEmptyOnes) {
    ExpectLinted({
        {"in a list",
         WithOnlySearchOptions("include_paths = [@\"\", \"a\", @\"\"]"),
         {{"An empty element is ignored.", "Remove it."},
          {"An empty element is ignored.", "Remove it."}}},
        {"in a table, the first",
         WithSearchOptions("alias_paths = ( [\"a\", @\"\"], [\"b\", \"\"] );"),
         {{"An empty text ends 'alias_paths' here, so this pair and those after it are lost.",
           "Write a name and a replacement in each pair, neither of them empty."}}},
    });
}

TEST(LintPairs, TellsOfWhatIsNoPair) {
    const char* const cure = "Write each pair as [\"old\", \"new\"].";
    ExpectLinted({
        {"a name alone",
         WithSearchOptions("alias_paths = ( [\"a\", \"b\"], [@\"c\"] );"),
         {{"'c' has no replacement and is left out.", cure}}},
        {"brackets that stand elsewhere",
         WithSearchOptions("alias_paths = ( [@\"a\"], [\"b\", @\"c\"] );"),
         {{"'a' and 'b' are taken for a pair, since brackets do not count and texts are taken two by two.",
           cure},
          {"'c' has no replacement and is left out.", cure}}},
    });
}

TEST(LintPairs, BracketsMayBeLeftOut) {
    ExpectNothingTold({WithSearchOptions("alias_paths = ( \"a\", \"b\", \"c\" \"d\" )"),
                       WithSearchOptions("alias_paths = ( [\"a\" /* [ */, \"b[\"] );")});
}

TEST(LintBackslashes, TellsOfRunsThatMeanMoreThanOne) {
    const auto run = [](int length) {
        return Told{"The " + std::to_string(length) + " backslashes here are read as a single one.",
                    "Write one backslash, or '/' between directories."};
    };
    ExpectLinted({
        {"in a list, the first run of an element",
         WithOnlySearchOptions(R"(include_paths = ["a@\\\\b\\\\c", "d@\\\e"])"),
         {run(4), run(3)}},
        {"two at the start", test::WithRuntime(R"(crash_reporter_name = "@\\host\x")"), {run(2)}},
        {"in a pair", WithSearchOptions(R"(alias_paths = ( ["a@\\\\b", "c"] );)"), {run(4)}},
    });
}

TEST(LintBackslashes, TwoAreOneToMostPrograms) {
    ExpectNothingTold({WithOnlySearchOptions(R"(include_paths = ["a\\b\c\\"])")});
}

}  // namespace
}  // namespace sealkeeper
