#include "inspect/rules/rule_places.h"

#include <gtest/gtest.h>

namespace sealkeeper {
namespace {

std::string ConfigWith(const std::string& searchOptions) {
    return "config_info { version = 2; }\nsearch_options {\n" + searchOptions + "\n}\n";
}

std::string PlaceText(const TextPlace& place) {
    return std::to_string(place.line) + ":" + std::to_string(place.column);
}

RulePlaces PlacesIn(const std::string& text) {
    ConfigDocument document;
    ConfigOutline outline;
    EXPECT_TRUE(OutlineConfigText(text, document, outline));
    return PlacesOfRules(text, outline);
}

TEST(RulePlacesOfAText, ArePatternsOfTheListInUseInTheirOrder) {
    const RulePlaces places = PlacesIn(
        ConfigWith("include_paths = [\"a\",\n\"b\"]\nother = [\"x\"]\ninclude_paths = [\"c\"]"));
    EXPECT_EQ(places.patternKey, "include_paths");
    EXPECT_EQ(PlaceText(places.patternList), "3:17");
    ASSERT_EQ(places.patterns.size(), 3U);
    EXPECT_EQ(PlaceText(places.patterns[0]), "3:19");
    EXPECT_EQ(PlaceText(places.patterns[1]), "4:2");
    EXPECT_EQ(PlaceText(places.patterns[2]), "6:19");
}

TEST(RulePlacesOfAText, AreOfTheExcludesWhereThatIsAList) {
    const RulePlaces excludes =
        PlacesIn(ConfigWith("include_paths = \"a\"\nexclude_paths = [\"b\"]"));
    EXPECT_EQ(excludes.patternKey, "exclude_paths");
    EXPECT_EQ(PlaceText(excludes.patternList), "4:17");
    EXPECT_EQ(excludes.patterns.size(), 1U);
    EXPECT_EQ(PlacesIn(ConfigWith("exclude_paths = 1;\ninclude_paths = [\"b\"]")).patternKey,
              "include_paths");
}

TEST(RulePlacesOfAText, AreOfOtherSectionsNever) {
    EXPECT_TRUE(PlacesIn("s { include_paths = [\"a\"] }\n").patterns.empty());
}

TEST(RulePlacesOfAText, AreThoseOfExtensionsAliasesAndThreshold) {
    const RulePlaces places =
        PlacesIn(ConfigWith("exclude_extensions = [\".a\", \".b\", \".a\"]\n"
                            "alias_paths = ( [\"x\\y\", \"z\"], [\"w\", \"v\"] )\n"
                            "exclude_size_threshold = 1;\nexclude_size_threshold = 2;"));
    ASSERT_EQ(places.extensions.size(), 2U);
    EXPECT_EQ(PlaceText(places.extensions.at(".a")), "3:24") << "the first of two";
    ASSERT_EQ(places.aliases.size(), 2U);
    EXPECT_EQ(PlaceText(places.aliases.at("x/y")), "4:19") << "as the tool stores it";
    EXPECT_EQ(PlaceText(places.aliases.at("w")), "4:33");
    ASSERT_TRUE(places.sizeThreshold.has_value());
    EXPECT_EQ(PlaceText(*places.sizeThreshold), "6:26") << "the last, which holds";
    EXPECT_EQ(PlacesIn(ConfigWith("exclude_size_threshold = \"1\"")).sizeThreshold, std::nullopt);
}

}  // namespace
}  // namespace sealkeeper
