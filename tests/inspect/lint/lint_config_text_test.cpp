#include "inspect/lint/lint_config_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "inspect/lint/lint_expectations.h"

namespace sealkeeper {
namespace {

std::vector<std::string> FilesIn(const std::filesystem::path& directory) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        std::ifstream file(entry.path(), std::ios::binary);
        files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return files;
}

std::vector<std::string> Examples() {
    return FilesIn(SEALKEEPER_EXAMPLES_DIR);
}

bool IsSentence(const std::string& text) {
    return text.size() > 1 && text.ends_with('.') && text.find('\n') == std::string::npos;
}

// What must hold for every warning about any text.
void ExpectSoundWarnings(const std::string& text) {
    const std::vector<RuleWarning> warnings = LintConfigText(text);
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    std::tuple<std::size_t, std::size_t> last = {0, 0};
    for (const RuleWarning& warning : warnings) {
        ASSERT_LE(warning.line, lines) << text;
        ASSERT_EQ(warning.line == 0, warning.column == 0) << text;
        ASSERT_LE(warning.column, text.size() + 1) << text;
        ASSERT_TRUE(warning.message.ends_with('.')) << text;
        ASSERT_TRUE(warning.cure.ends_with('.')) << text;
        const std::tuple place = {warning.line, warning.column};
        ASSERT_GE(place, last) << text;
        last = place;
    }
}

TEST(LintConfigText, TellsNothingOfTheExamples) {
    const std::vector<std::string> examples = Examples();
    EXPECT_GE(examples.size(), 3U);
    test::ExpectNothingTold(examples);
}

TEST(LintConfigText, TellsNothingOfTheDocumentedExample) {
    test::ExpectNothingTold(
        {"# catalogue configuration\n"
         "config_info {\n"
         "    version = 2;\n"
         "}\n"
         "search_options {\n"
         "    include_paths = [\"*.exe\", \"bin/*.dylib\"]   // line comment\n"
         "    exclude_extensions = [\".pdb\", \".log\"]\n"
         "    exclude_size_threshold = 1024;\n"
         "    ignore_files_without_extension = false\n"
         "    /* block\n"
         "       comment */\n"
         "    alias_paths = ( [\"Binaries/Mac\", \"bin\"], [\"Content\", "
         "\"data\"] );\n"
         "}\n"});
}

TEST(LintConfigText, TellsInWholeSentences) {
    for (const RuleWarning& warning : LintConfigText("version = 2;\nfoo { include_paths = [")) {
        EXPECT_TRUE(IsSentence(warning.message)) << warning.message;
        EXPECT_TRUE(IsSentence(warning.cure)) << warning.cure;
    }
}

TEST(LintConfigText, EveryTruncationIsSound) {
    for (const std::string& example : Examples()) {
        for (std::size_t length = 0; length < example.size(); ++length) {
            ExpectSoundWarnings(example.substr(0, length));
        }
    }
    for (const std::string& text : FilesIn(SEALKEEPER_CONFIGURATION_CORPUS_DIR)) {
        for (std::size_t length = 0; length <= text.size(); ++length) {
            ExpectSoundWarnings(text.substr(0, length));
        }
    }
}

TEST(LintConfigText, RandomChangesAreSound) {
    const std::vector<std::string> examples = Examples();
    const std::vector<std::string> fragments = {"\"",
                                                "[",
                                                "]",
                                                "(",
                                                ")",
                                                "{",
                                                "}",
                                                ";",
                                                "#",
                                                "//",
                                                "/*",
                                                "*/",
                                                "\n",
                                                "\r",
                                                "=",
                                                ":",
                                                "true",
                                                "false",
                                                "1",
                                                "-1",
                                                "\\\\",
                                                "'",
                                                "\xE2\x80\x9C",
                                                "[]",
                                                "()",
                                                "[\"",
                                                "\"]",
                                                "**",
                                                "\0",
                                                "version",
                                                "include_paths",
                                                "search_options",
                                                " "};
    std::mt19937 random(2);
    const auto upTo = [&random](std::size_t count) { return random() % count; };
    for (int round = 0; round < 20'000; ++round) {
        std::string text = examples[upTo(examples.size())];
        // Only a part of it, so that several changes fall close together.
        text = text.substr(upTo(text.size() / 2), 1 + upTo(600));
        for (std::size_t changes = 1 + upTo(8); changes > 0; --changes) {
            const std::size_t place = upTo(text.size() + 1);
            const std::size_t length = upTo(4);
            text.replace(place, length, fragments[upTo(fragments.size())]);
        }
        ExpectSoundWarnings(text);
    }
}

TEST(LintConfigText, RandomBytesAreSound) {
    std::mt19937 random(3);
    for (int round = 0; round < 5'000; ++round) {
        std::string text = "search_options { include_paths = [";
        for (std::size_t length = random() % 60; length > 0; --length) {
            text += static_cast<char>(random() % 256);
        }
        ExpectSoundWarnings(text);
    }
}

std::string Repeated(const std::string& text, std::size_t count) {
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

// Each of these would take minutes if a rule looked at the whole text for each value.
TEST(LintConfigText, LongInputsTakeLinearTime) {
    constexpr std::size_t kCount = 20'000;
    const std::string begin = "search_options { ";
    const std::vector<std::string> texts = {
        begin + Repeated("include_paths = [\"a\", b, \"/c\"] ", kCount),
        begin + Repeated("include_paths = [\"a\" // \"b\n] ", kCount),
        begin + "include_paths = [" + Repeated("\"a\\\\\\b\", ", kCount) + "]\n",
        begin + "include_paths = [" + Repeated("a ' \"\" // ", kCount) + "]\n",
        begin + "alias_paths = (" + Repeated("[\"a\"], ", kCount) + ")\n",
        begin + "exclude_size_threshold = 1" + Repeated("\nexclude_size_threshold = 1", kCount) +
            ";\n",
        begin + Repeated("exclude_size_threshold = 1x; ", kCount),
        begin + Repeated("exclude_size_threshold = 1 # ; x\n x = 1; ", kCount),
        begin + Repeated("x = true# x = 1; ", kCount),
        begin + Repeated("x = \"\n\" ", kCount),
        begin + Repeated("} search_options { ", kCount),
        Repeated("foo bar {} ", kCount),
        Repeated("# /* */ x {}\n", kCount),
        Repeated("/* /*/ ", kCount),
        Repeated("/*/*/", kCount),
        begin + std::string(100 * kCount, 'x') + " = 1;",
        begin + "crash_reporter_name = \"" + std::string(100 * kCount, '\\') + "\"\n",
        std::string(100 * kCount, '\n'),
        std::string(100 * kCount, '#'),
        // One megabyte each.
        Repeated("#/**/", 5 * kCount) + std::string(25 * kCount, ' '),
        begin + Repeated("a=true#/**/ ", 3 * kCount) + std::string(15 * kCount, ' '),
        begin + Repeated("a=truex", 7 * kCount),
    };
    for (const std::string& text : texts) {
        ExpectSoundWarnings(text);
    }
}

}  // namespace
}  // namespace sealkeeper
