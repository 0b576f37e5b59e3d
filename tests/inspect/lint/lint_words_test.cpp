// Shared parts of the rules: names, how they are shown, and how a person reads a text.
#include <gtest/gtest.h>

#include <string>

#include "config/config_names.h"
#include "inspect/lint/known_keys.h"
#include "inspect/lint/lint_expectations.h"
#include "inspect/lint/nearest_name.h"
#include "inspect/lint/plain_reading.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

TEST(NearestName, FindsSlips) {
    const std::vector<std::string> names = {"include_paths", "exclude_paths", "version"};
    EXPECT_EQ(NearestName("include_path", names), "include_paths");
    EXPECT_EQ(NearestName("includepaths", names), "include_paths");
    EXPECT_EQ(NearestName("exlcude_paths", names), "exclude_paths");
    EXPECT_EQ(NearestName("exclude-path", names), "exclude_paths");
    EXPECT_EQ(NearestName("verison", names), "version") << "two neighbours swapped";
}

TEST(NearestName, FindsNothingFarAway) {
    const std::vector<std::string> names = {"include_paths", "version"};
    EXPECT_EQ(NearestName("vorsoin", names), "");
    EXPECT_EQ(NearestName("paths", names), "");
    EXPECT_EQ(NearestName("", names), "");
    EXPECT_EQ(NearestName(std::string(1'000'000, 'v'), names), "");
}

TEST(ShownText, CutsWhatIsLongBetweenCharacters) {
    EXPECT_EQ(ShownName("a"), "'a'");
    EXPECT_EQ(ShownName(std::string(60, 'x')), "'" + std::string(60, 'x') + "'");
    EXPECT_EQ(ShownName(std::string(61, 'x')), "'" + std::string(60, 'x') + "...'");
    EXPECT_EQ(ShownName(std::string(59, 'x') + "\xC3\xA4y"), "'" + std::string(59, 'x') + "...'");
    EXPECT_EQ(WholeValue(std::string(61, 'x')), '"' + std::string(61, 'x') + '"')
        << "what is to be written";
}

TEST(ShownText, ListsNames) {
    EXPECT_EQ(ShownNames({"a"}), "'a'");
    EXPECT_EQ(ShownNames({"a", "b"}), "'a' and 'b'");
    EXPECT_EQ(ShownNames({"a", "b", "c", "d"}), "'a', 'b', 'c' and 'd'");
    EXPECT_EQ(ShownNames({"a", "b", "c", "d", "e", "f"}), "'a', 'b', 'c', 'd' and 2 more");
}

TEST(PlainReading, TakesCommentsOut) {
    EXPECT_EQ(WithoutComments("a # b\nc // d\ne /* f\n */ g"), "a    \nc     \ne     \n    g");
    EXPECT_EQ(WithoutComments("\"#\" '//' /* never closed"), "\"#\" '                   ");
    EXPECT_EQ(WithoutComments("\"a\n# b"), "\"a\n   ") << "a quote ends with its line";
    EXPECT_EQ(WithoutComments("/*/ a */b"), "        b");
    EXPECT_EQ(WithoutComments(""), "");
}

TEST(KnownKeys, ExamplesAreTakenWithoutAWarning) {
    std::string search;
    for (const std::string& name : KnownKeyNames(kSearchSection)) {
        if (name != kExcludePathsKey) {
            search += name + " = " + std::string(FindKnownKey(name)->example) + "\n";
        }
    }
    std::string runtime;
    for (const std::string& name : KnownKeyNames(kRuntimeSection)) {
        runtime += name + " = " + std::string(FindKnownKey(name)->example) + "\n";
    }
    EXPECT_EQ(KnownKeyNames(kSearchSection).size(), 6U);
    EXPECT_EQ(KnownKeyNames(kRuntimeSection).size(), 3U);
    test::ExpectNothingTold({"config_info { version = 2; }\nsearch_options {\n" + search +
                             "}\nruntime_configuration {\n" + runtime + "}\n"});
}

}  // namespace
}  // namespace sealkeeper
