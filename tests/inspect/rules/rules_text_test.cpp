#include "inspect/rules/rules_text.h"

#include <gtest/gtest.h>

#include "support/captured_output.h"

namespace sealkeeper {
namespace {

// The text for standard output that is no terminal.
std::string PlainText(const RulesReport& report, RulesListing listing) {
    const test::CapturedOutput output;
    return RulesText(report, Console(), listing);
}

RulesReport SmallReport() {
    return {"game.cfg",
            "/game",
            {{".git/index", 1, LeftOutReason::Hidden},
             {"art/a.psd", 1500, LeftOutReason::ExcludedExtension},
             {"data/maps/castle.map", 1234567, {}},
             {"video/small.mkv", 1100000000, LeftOutReason::TooLarge},
             {"video/tall.mkv", 2000000000, LeftOutReason::TooLarge}},
            {}};
}

TEST(RulesText, TellsTotalsAndWhatIsLeftOutByReason) {
    EXPECT_EQ(PlainText(SmallReport(), RulesListing::LeftOut),
              "sealed       1 file   1.2 MB\n"
              "left out     4 files  3.1 GB\n"
              "  hidden     1 file   1 byte\n"
              "  extension  1 file   1.5 kB\n"
              "  size       2 files  3.1 GB\n"
              "\n"
              "left out: hidden\n"
              "  1 byte  .git/index\n"
              "\n"
              "left out: extension\n"
              "  1.5 kB  art/a.psd\n"
              "\n"
              "left out: size\n"
              "  2.0 GB  video/tall.mkv\n"
              "  1.1 GB  video/small.mkv\n");
}

TEST(RulesText, SaysFirstWhyGenerateWouldFail) {
    RulesReport report = SmallReport();
    report.refusal = Refusal{ResultCode::InitFailedConfig, "Because."};
    EXPECT_TRUE(PlainText(report, RulesListing::LeftOut)
                    .starts_with("generate fails with 4 (InitFailedConfig): Because.\n\nsealed"));
}

TEST(RulesText, ListsEveryFileInOrder) {
    EXPECT_EQ(PlainText(SmallReport(), RulesListing::EveryFile),
              "sealed       1 file   1.2 MB\n"
              "left out     4 files  3.1 GB\n"
              "  hidden     1 file   1 byte\n"
              "  extension  1 file   1.5 kB\n"
              "  size       2 files  3.1 GB\n"
              "\n"
              "left out: hidden     1 byte  .git/index\n"
              "left out: extension  1.5 kB  art/a.psd\n"
              "sealed               1.2 MB  data/maps/castle.map\n"
              "left out: size       1.1 GB  video/small.mkv\n"
              "left out: size       2.0 GB  video/tall.mkv\n");
}

TEST(RulesText, PutsWarningsFirstWithTheirPlaceAndCure) {
    RulesReport report{"game.cfg", "/game", {}, {}};
    report.warnings = {{0, 0, "Nowhere.", "Cure it."}, {12, 5, "There.", "Mend it."}};
    EXPECT_EQ(PlainText(report, RulesListing::LeftOut),
              "game.cfg: Nowhere.\n"
              "    Cure it.\n"
              "game.cfg:12:5: There.\n"
              "    Mend it.\n"
              "\n"
              "sealed    0 files  0 bytes\n"
              "left out  0 files  0 bytes\n");
}

RulesReport HiddenFiles(std::size_t count) {
    RulesReport report;
    for (std::size_t file = 0; file < count; ++file) {
        report.files.push_back({"." + std::to_string(file), 1, LeftOutReason::Hidden});
    }
    return report;
}

TEST(RulesText, CutsAReasonAfterADozenFiles) {
    const std::string dozen = PlainText(HiddenFiles(12), RulesListing::LeftOut);
    EXPECT_NE(dozen.find("\n  1 byte  .11\n"), std::string::npos);
    EXPECT_EQ(dozen.find("more"), std::string::npos);
    const std::string many = PlainText(HiddenFiles(1300), RulesListing::LeftOut);
    EXPECT_TRUE(many.ends_with("\n  1 byte  .11\n  and 1,288 more\n"));
}

TEST(RulesText, ListsEveryFileWithoutACut) {
    const std::string many = PlainText(HiddenFiles(1300), RulesListing::EveryFile);
    EXPECT_TRUE(many.ends_with("\nleft out: hidden  1 byte  .1299\n"));
}

}  // namespace
}  // namespace sealkeeper
