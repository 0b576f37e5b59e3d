// Prints a report of a game that is not there, to be looked at and for the tests of the page:
//   sealkeeper_sample_report html|json FILES [hostile]
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "inspect/rules/rules_json.h"
#include "inspect/rules/rules_page.h"
#include "inspect/rules/sample_report.h"

namespace {

std::string TextOf(const sealkeeper::RulesReport& report, std::string_view format) {
    return format == "html" ? sealkeeper::RulesPage(report) : sealkeeper::RulesJson(report);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs("usage: sealkeeper_sample_report html|json FILES [hostile]\n", stderr);
        return EXIT_FAILURE;
    }
    auto report = sealkeeper::test::SampleReport(std::strtoul(argv[2], nullptr, 10));
    if (argc > 3) {
        sealkeeper::test::AddHostileTexts(report);
    }
    const std::string text = TextOf(report, argv[1]);
    std::fwrite(text.data(), 1, text.size(), stdout);
    return EXIT_SUCCESS;
}
