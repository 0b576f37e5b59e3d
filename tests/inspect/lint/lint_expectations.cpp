#include "inspect/lint/lint_expectations.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "config/text_place.h"
#include "inspect/lint/lint_config_text.h"

namespace sealkeeper::test {
namespace {

std::string Shown(std::size_t line, std::size_t column, const std::string& message,
                  const std::string& cure) {
    return std::to_string(line) + ":" + std::to_string(column) + ": " + message + "\n    " + cure +
           "\n";
}

std::string ShownWarnings(const std::string& text) {
    std::string shown;
    for (const RuleWarning& warning : LintConfigText(text)) {
        shown += Shown(warning.line, warning.column, warning.message, warning.cure);
    }
    return shown;
}

// Removes the marks from `text`, and returns their places.
std::vector<TextPlace> TakeMarks(std::string& text) {
    std::vector<std::size_t> offsets;
    for (std::size_t mark = text.find('@'); mark != std::string::npos; mark = text.find('@')) {
        text.erase(mark, 1);
        offsets.push_back(mark);
    }
    std::vector<TextPlace> places;
    const TextLines lines(text);
    for (const std::size_t offset : offsets) {
        places.push_back(lines.PlaceOf(offset));
    }
    return places;
}

}  // namespace

void ExpectLinted(const std::vector<LintCase>& cases) {
    for (const LintCase& lint : cases) {
        std::string text = lint.marked;
        std::vector<TextPlace> places(lint.withoutPlace, TextPlace{0, 0});
        const std::vector<TextPlace> marks = TakeMarks(text);
        places.insert(places.end(), marks.begin(), marks.end());
        ASSERT_EQ(places.size(), lint.told.size()) << lint.name << ": a mark for each warning";
        std::string expected;
        for (std::size_t i = 0; i < places.size(); ++i) {
            expected +=
                Shown(places[i].line, places[i].column, lint.told[i].message, lint.told[i].cure);
        }
        EXPECT_EQ(ShownWarnings(text), expected) << lint.name << ":\n" << text;
    }
}

void ExpectNothingTold(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        EXPECT_EQ(ShownWarnings(text), "") << text;
    }
}

std::string WithSearchOptions(const std::string& entries) {
    return "config_info { version = 2; }\nsearch_options {\ninclude_paths = [\"Content\"]\n" +
           entries + "\n}\n";
}

std::string WithOnlySearchOptions(const std::string& entries) {
    return "config_info { version = 2; }\nsearch_options { " + entries + "\n}\n";
}

std::string WithRuntime(const std::string& entries) {
    return "config_info { version = 2; }\nsearch_options { include_paths = [\"Content\"] }\n"
           "runtime_configuration { " +
           entries + "\n}\n";
}

Told NoVersion() {
    return {"The tool reads no version here, takes the file for one of version 1 and refuses it.",
            "Write 'config_info { version = 2; }'."};
}

Told NoPathList() {
    return {
        "The tool reads neither a list include_paths nor a list exclude_paths here, and refuses the file.",
        "Write one of them in search_options, as in 'include_paths = [\"Content\"]'."};
}

Told HashesEverything() {
    return {
        "The list of include_paths has no elements, which the tool takes for excluding nothing: it hashes every file of the game.",
        "Write what to hash, or 'exclude_paths = [\"Quorvane\"]' if every file outside the output folder is meant."};
}

Told EndsAfter(int wrongLine, int line) {
    return {"Because of the mistake on line " + std::to_string(wrongLine) +
                " the tool stops reading here, so everything from line " + std::to_string(line) +
                " on is ignored.",
            "Correct line " + std::to_string(wrongLine) + " first."};
}

}  // namespace sealkeeper::test
