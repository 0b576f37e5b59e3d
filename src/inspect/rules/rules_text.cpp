#include "inspect/rules/rules_text.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "inspect/report/aligned_text.h"
#include "inspect/report/number_text.h"
#include "inspect/rules/warning_place.h"

namespace sealkeeper {
namespace {

using FileList = std::vector<const JudgedFile*>;

constexpr std::string_view kIndent = "  ";
constexpr std::string_view kGap = "  ";

std::string WarningsText(const RulesReport& report, const Console& console) {
    std::string text;
    for (const RuleWarning& warning : report.warnings) {
        text += console.Styled(Style::Strong, console.Foreign(WarningPlace(report, warning)) + ":");
        text += " " + console.Styled(Style::Warning, console.Foreign(warning.message)) + "\n";
        text += "    " + console.Foreign(warning.cure) + "\n";
    }
    return text.empty() ? text : text + "\n";
}

std::string RefusalLine(const RulesReport& report, const Console& console) {
    return report.refusal
               ? console.Styled(Style::Bad, console.Foreign(RefusalText(*report.refusal))) + "\n\n"
               : "";
}

// One row of the totals.
struct TotalRow {
    Style style = Style::Plain;
    std::string label;
    std::string count;
    std::string size;
};

TotalRow MakeTotalRow(Style style, std::string label, const FileTotal& total) {
    // The blank aligns "file" with "files".
    return {style, std::move(label), CountText(total.files, "file") + (total.files == 1 ? " " : ""),
            SizeText(total.bytes)};
}

std::vector<TotalRow> TotalRows(const RulesTotals& totals) {
    std::vector<TotalRow> rows = {MakeTotalRow(Style::Good, "sealed", totals.sealed),
                                  MakeTotalRow(Style::Strong, "left out", totals.leftOut)};
    for (const auto& [reason, total] : totals.leftOutBy) {
        rows.push_back(
            MakeTotalRow(Style::Plain, std::string(kIndent) + LeftOutReasonText(reason), total));
    }
    return rows;
}

std::string TotalsText(const RulesTotals& totals, const Console& console) {
    const std::vector<TotalRow> rows = TotalRows(totals);
    std::size_t labelWidth = 0;
    std::size_t countWidth = 0;
    std::size_t sizeWidth = 0;
    for (const TotalRow& row : rows) {
        labelWidth = std::max(labelWidth, row.label.size());
        countWidth = std::max(countWidth, row.count.size());
        sizeWidth = std::max(sizeWidth, row.size.size());
    }
    std::string text;
    for (const TotalRow& row : rows) {
        text += console.Styled(row.style, AlignedLeft(row.label, labelWidth));
        text += std::string(kGap) + AlignedRight(row.count, countWidth);
        text += std::string(kGap) + AlignedRight(row.size, sizeWidth) + "\n";
    }
    return text;
}

// Sizes come first, so that paths of any length stay aligned.
std::string FileLines(std::span<const JudgedFile* const> files, const Console& console) {
    std::size_t sizeWidth = 0;
    for (const JudgedFile* const file : files) {
        sizeWidth = std::max(sizeWidth, SizeText(file->sizeBytes).size());
    }
    std::string text;
    for (const JudgedFile* const file : files) {
        text += std::string(kIndent) + AlignedRight(SizeText(file->sizeBytes), sizeWidth);
        text += std::string(kGap) + console.Foreign(file->path) + "\n";
    }
    return text;
}

std::map<LeftOutReason, FileList> LeftOutByReason(const RulesReport& report) {
    std::map<LeftOutReason, FileList> groups;
    for (const JudgedFile& file : report.files) {
        if (file.leftOut) {
            groups[*file.leftOut].push_back(&file);
        }
    }
    const auto tooLarge = groups.find(LeftOutReason::TooLarge);
    if (tooLarge != groups.end()) {
        std::stable_sort(tooLarge->second.begin(), tooLarge->second.end(),
                         [](const JudgedFile* left, const JudgedFile* right) {
                             return left->sizeBytes > right->sizeBytes;
                         });
    }
    return groups;
}

std::string LeftOutText(const RulesReport& report, const Console& console) {
    constexpr std::size_t kShownFiles = 12;
    std::string text;
    for (const auto& [reason, files] : LeftOutByReason(report)) {
        const std::size_t shown = std::min(files.size(), kShownFiles);
        text += "\n";
        text +=
            console.Styled(Style::Strong, std::string("left out: ") + LeftOutReasonText(reason));
        text += "\n";
        text += FileLines(std::span(files).first(shown), console);
        if (shown < files.size()) {
            text += std::string(kIndent) + "and " + GroupedNumber(files.size() - shown) + " more\n";
        }
    }
    return text;
}

// "sealed", or the reason why the file was left out.
std::string StateText(const JudgedFile& file) {
    return file.leftOut ? std::string("left out: ") + LeftOutReasonText(*file.leftOut) : "sealed";
}

std::string EveryFileText(const RulesReport& report, const Console& console) {
    std::size_t stateWidth = 0;
    std::size_t sizeWidth = 0;
    for (const JudgedFile& file : report.files) {
        stateWidth = std::max(stateWidth, StateText(file).size());
        sizeWidth = std::max(sizeWidth, SizeText(file.sizeBytes).size());
    }
    std::string text = report.files.empty() ? "" : "\n";
    for (const JudgedFile& file : report.files) {
        text += console.Styled(file.leftOut ? Style::Plain : Style::Good,
                               AlignedLeft(StateText(file), stateWidth));
        text += std::string(kGap) + AlignedRight(SizeText(file.sizeBytes), sizeWidth);
        text += std::string(kGap) + console.Foreign(file.path) + "\n";
    }
    return text;
}

}  // namespace

std::string RulesText(const RulesReport& report, const Console& console, RulesListing listing) {
    std::string text = RefusalLine(report, console) + WarningsText(report, console) +
                       TotalsText(TotalsOf(report), console);
    switch (listing) {
        case RulesListing::LeftOut:
            return text + LeftOutText(report, console);
        case RulesListing::EveryFile:
            return text + EveryFileText(report, console);
    }
    return text;
}

}  // namespace sealkeeper
