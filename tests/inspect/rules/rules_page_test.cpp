#include "inspect/rules/rules_page.h"

#include <gtest/gtest.h>

#include "inspect/rules/html_text.h"
#include "inspect/rules/page_data.h"

namespace sealkeeper {
namespace {

TEST(HtmlText, TakesMarkupForText) {
    EXPECT_EQ(HtmlText("<a b=\"c\">&'"), "&lt;a b=&quot;c&quot;&gt;&amp;'");
}

TEST(HtmlText, ShowsControlCharactersAndReplacesWhatIsNoUtf8) {
    EXPECT_EQ(HtmlText("a\nb\x1b\u0085"), "a\\x0ab\\x1b\\xc2\\x85");
    EXPECT_EQ(HtmlText("\u00e4\xFF"), "\u00e4\uFFFD");
}

TEST(HtmlText, ShowsWhatMakesANameLookLikeAnother) {
    EXPECT_EQ(HtmlText("a\u202Egpj.exe"), "a\\xe2\\x80\\xaegpj.exe");
    EXPECT_EQ(HtmlText("a\u2028b"), "a\\xe2\\x80\\xa8b");
}

TEST(PageData, HasTheStatesThatOccurAndTheFilesByThem) {
    const RulesReport report{"game.cfg",
                             "/game",
                             {{"a", 1, LeftOutReason::TooLarge},
                              {"b", 2, {}},
                              {"c", 3, LeftOutReason::Hidden},
                              {"d\xFF", 4, {}}},
                             {}};
    EXPECT_EQ(PageData(report),
              "{\"states\":[\"sealed\",\"hidden\",\"size\"],"
              "\"files\":[[\"a\",1,2],[\"b\",2,0],[\"c\",3,1],[\"d\uFFFD\",4,0,\"64ff\"]]}");
}

TEST(PageData, HasNoLessThan) {
    const RulesReport report{"game.cfg", "/game", {{"</script><!--", 1, {}}}, {}};
    EXPECT_EQ(PageData(report),
              R"({"states":["sealed"],"files":[["\u003c/script>\u003c!--",1,0]]})");
}

TEST(RulesPage, TellsTheSummaryOfOneFileAndOfNone) {
    const std::string page = RulesPage({"game.cfg", "/game", {{"a", 5, {}}}, {}});
    EXPECT_NE(page.find(">1 file (5 bytes) is sealed, 0 files (0 bytes) left out.<"),
              std::string::npos);
    EXPECT_NE(page.find("Nothing to warn of."), std::string::npos);
}

TEST(RulesPage, LeavesPlacesInTextsOfOthersAlone) {
    const std::string page = RulesPage({"{{data}}", "{{totals}} {{unknown}}", {}, {}});
    EXPECT_NE(page.find("<dd>{{data}}</dd>"), std::string::npos);
    EXPECT_NE(page.find("<dd>{{totals}} {{unknown}}</dd>"), std::string::npos);
}

}  // namespace
}  // namespace sealkeeper
