#include "inspect/rules/rules_page.h"

#include <map>
#include <string_view>

#include "inspect/report/number_text.h"
#include "inspect/rules/html_text.h"
#include "inspect/rules/page_assets.h"
#include "inspect/rules/page_data.h"
#include "inspect/rules/warning_place.h"

namespace sealkeeper {
namespace {

using Places = std::map<std::string_view, std::string>;

// Replaces each "{{name}}" in `markup`. Inserted text is not expanded again.
std::string Filled(std::string_view markup, const Places& places) {
    constexpr std::string_view kOpening = "{{";
    constexpr std::string_view kClosing = "}}";
    std::string page;
    for (;;) {
        const std::size_t opening = markup.find(kOpening);
        const std::size_t closing = markup.find(kClosing, opening);
        if (closing == std::string_view::npos) {
            return page.append(markup);
        }
        const std::size_t name = opening + kOpening.size();
        page.append(markup.substr(0, opening));
        page.append(places.at(markup.substr(name, closing - name)));
        markup.remove_prefix(closing + kClosing.size());
    }
}

// Allows only the page's own script and style, by their hashes. The data element is not executed,
// so it needs no permission.
std::string ContentSecurityPolicy(const PageAssets& assets) {
    return "default-src 'none'; script-src 'sha256-" + std::string(assets.scriptHash) +
           "'; style-src 'sha256-" + std::string(assets.styleHash) +
           "'; base-uri 'none'; form-action 'none'";
}

std::string FilesAndSize(const FileTotal& total) {
    return CountText(total.files, "file") + " (" + SizeText(total.bytes) + ")";
}

std::string SummaryText(const RulesReport& report, const RulesTotals& totals) {
    const std::string refusal =
        report.refusal ? "<strong>" + HtmlText(RefusalText(*report.refusal)) + "</strong> " : "";
    return refusal + FilesAndSize(totals.sealed) + (totals.sealed.files == 1 ? " is" : " are") +
           " sealed, " + FilesAndSize(totals.leftOut) + " left out.";
}

// `attribute` tells the script what the row sums up.
std::string TotalMarkup(const std::string& attribute, std::string_view label,
                        const FileTotal& total) {
    return "<tr " + attribute + "><th scope=\"row\">" + std::string(label) + "</th><td>" +
           GroupedNumber(total.files) + "</td><td>" + SizeText(total.bytes) + "</td><td>" +
           GroupedNumber(total.bytes) + "</td></tr>\n";
}

std::string StateAttribute(std::string_view state) {
    return "data-state=\"" + std::string(state) + "\"";
}

std::string TotalsMarkup(const RulesTotals& totals) {
    std::string rows = TotalMarkup(StateAttribute("sealed"), "sealed", totals.sealed);
    rows += TotalMarkup("class=\"sum\"", "left out", totals.leftOut);
    for (const auto& [reason, total] : totals.leftOutBy) {
        const char* const text = LeftOutReasonText(reason);
        rows += TotalMarkup(StateAttribute(text), text, total);
    }
    return rows;
}

std::string WarningItems(const RulesReport& report) {
    if (report.warnings.empty()) {
        return "<p>Nothing to warn of.</p>\n";
    }
    std::string items = "<ol>\n";
    for (const RuleWarning& warning : report.warnings) {
        items += "<li><code>" + HtmlText(WarningPlace(report, warning)) + "</code> <strong>" +
                 HtmlText(warning.message) + "</strong><p>" + HtmlText(warning.cure) +
                 "</p></li>\n";
    }
    return items + "</ol>\n";
}

}  // namespace

std::string RulesPage(const RulesReport& report) {
    const PageAssets& assets = kRulesPageAssets;
    const RulesTotals totals = TotalsOf(report);
    return Filled(assets.markup, {
                                     {"policy", ContentSecurityPolicy(assets)},
                                     {"style", std::string(assets.style)},
                                     {"script", std::string(assets.script)},
                                     {"game", HtmlText(report.gameDirectory)},
                                     {"config", HtmlText(report.configFile)},
                                     {"summary", SummaryText(report, totals)},
                                     {"totals", TotalsMarkup(totals)},
                                     {"warningCount", CountText(report.warnings.size(), "warning")},
                                     {"warnings", WarningItems(report)},
                                     {"data", PageData(report)},
                                 });
}

}  // namespace sealkeeper
