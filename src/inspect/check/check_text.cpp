#include "inspect/check/check_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "inspect/report/aligned_text.h"
#include "inspect/report/code_text.h"
#include "inspect/report/number_text.h"

namespace sealkeeper {
namespace {

std::size_t WidestCode(const CheckReport& report) {
    std::size_t widest = 0;
    for (const auto& [code, count] : CountsByCode(report)) {
        widest = std::max(widest, CodeText(code).size());
    }
    return widest;
}

std::string CataloguesText(const CheckReport& report, const Console& console) {
    std::string text;
    for (const CheckedCatalogue& catalogue : report.catalogues) {
        text += console.Foreign(catalogue.name) + ": ";
        text += catalogue.code == ResultCode::Ok
                    ? CountText(catalogue.files, "file")
                    : console.Styled(Style::Bad, "not read, " + CodeText(catalogue.code));
        text += '\n';
    }
    return text;
}

// The name of the catalogue, if there are several.
std::string CatalogueNote(const CheckReport& report, const CheckedFile& file,
                          const Console& console) {
    if (report.catalogues.size() < 2) {
        return {};
    }
    const std::string& name = report.catalogues[file.catalogueIndex].name;
    return console.Styled(Style::Faint, "  [" + console.Foreign(name) + "]");
}

std::string VerdictsText(const CheckReport& report, bool isVerbose, const Console& console) {
    const std::size_t width = WidestCode(report);
    std::string text;
    for (const CheckedFile& file : report.files) {
        const bool isGood = file.code == ResultCode::Ok;
        if (isGood && !isVerbose) {
            continue;
        }
        text += console.Styled(isGood ? Style::Good : Style::Bad,
                               AlignedLeft(CodeText(file.code), width)) +
                "  " + console.Foreign(file.path) + CatalogueNote(report, file, console) + "\n";
    }
    return text;
}

std::string AliasHint(const CheckReport& report) {
    const auto aliased = static_cast<std::uint64_t>(
        std::count_if(report.files.begin(), report.files.end(),
                      [](const CheckedFile& file) { return file.isAliased; }));
    if (aliased == 0) {
        return {};
    }
    return "\nThe paths of " + CountText(aliased, "file") +
           " are stored as aliases are (alias_paths): at four bytes a character.\n"
           "Verifying reads the first character of each alone: it looks for another file, and says nothing of these.\n";
}

std::string RuntimeConfigurationText(const CheckReport& report, const Console& console) {
    if (!report.runtimeConfiguration ||
        *report.runtimeConfiguration == RuntimeConfigurationVerdict::NotRead) {
        return {};
    }
    if (*report.runtimeConfiguration == RuntimeConfigurationVerdict::Good) {
        return "runtime.conf: good\n";
    }
    return "runtime.conf: " +
           console.Styled(Style::Bad, CodeText(CodeOf(*report.runtimeConfiguration))) + "  " +
           console.Foreign(report.runtimeConfigurationFailure) + "\n";
}

std::string HeadingOf(AdditionKind kind, std::uint64_t count) {
    switch (kind) {
        case AdditionKind::UnlistedFile:
            return CountText(count, "file") + " that no catalogue lists";
        case AdditionKind::UnlistedLink:
            return CountText(count, "link") + " that no catalogue lists";
        case AdditionKind::UnlistedSpecialFile:
            return CountText(count, "special file") + " that no catalogue lists";
        case AdditionKind::LinkWhereSealed:
            return CountText(count, "link") + " where files were sealed, which verifying follows";
        case AdditionKind::NotLookedAt:
            return CountText(count, "place") + " that could not be looked at";
        case AdditionKind::MissingRuntimeConfiguration:
            return "runtime.conf is missing, though base.bin is there";
        case AdditionKind::UnreadableRuntimeConfiguration:
            return "runtime.conf is there, but was not verified, because it cannot be read";
    }
    return {};
}

std::string AdditionText(const Addition& addition, const Console& console) {
    std::string text = "  " + console.Foreign(addition.path);
    if (!addition.target.empty()) {
        text += " -> " + console.Foreign(addition.target);
    }
    if (addition.sealedFiles > 0) {
        text += "  (" + CountText(addition.sealedFiles, "path") + ")";
    }
    if (!addition.reason.empty()) {
        text += ": " + console.Foreign(addition.reason);
    }
    return text + "\n";
}

std::string AdditionsText(const CheckReport& report, bool isVerbose, const Console& console) {
    constexpr std::ptrdiff_t kShown = 20;
    std::string text;
    for (auto first = report.additions.begin(); first != report.additions.end();) {
        const auto last = std::find_if(
            first, report.additions.end(),
            [first](const Addition& addition) { return addition.kind != first->kind; });
        const auto count = last - first;
        text += "\n" +
                console.Styled(Style::Warning,
                               HeadingOf(first->kind, static_cast<std::uint64_t>(count))) +
                ":\n";
        const auto shown = isVerbose ? count : std::min(count, kShown);
        std::for_each(first, first + shown,
                      [&](const Addition& addition) { text += AdditionText(addition, console); });
        if (shown < count) {
            text += "  and " + GroupedNumber(static_cast<std::uint64_t>(count - shown)) + " more\n";
        }
        first = last;
    }
    return text;
}

// "412 files: 410 with 0 (Ok), 2 with 23 (FileVerificationIOError)".
std::string SummaryText(const CheckReport& report) {
    std::string text = CountText(report.files.size(), "file");
    const char* separator = ": ";
    for (const auto& [code, count] : CountsByCode(report)) {
        text += separator + GroupedNumber(count) + " with " + CodeText(code);
        separator = ", ";
    }
    return text + "\n";
}

std::string StatusText(const CheckReport& report, bool isStrict, const Console& console) {
    const int status = StatusOf(report, isStrict);
    if (status == kAdditionsStatus) {
        return console.Styled(Style::Warning, "Status " + std::to_string(kAdditionsStatus) +
                                                  ": additions, which --strict does not let pass") +
               "\n";
    }
    const char* const kind = report.failure.empty() ? "Status " : "Ended before its end: status ";
    return console.Styled(status == 0 ? Style::Good : Style::Bad, kind + CodeText(report.code)) +
           "\n";
}

}  // namespace

std::string CheckText(const CheckReport& report, const CheckTextOptions& options,
                      const Console& console) {
    std::string text = CataloguesText(report, console) + RuntimeConfigurationText(report, console);
    const std::string verdicts = VerdictsText(report, options.isVerbose, console);
    text += verdicts.empty() ? "" : "\n" + verdicts;
    text += AliasHint(report) + AdditionsText(report, options.isVerbose, console);
    text += text.empty() ? "" : "\n";
    // Nothing to sum up if the verification ended before the first file.
    text += report.failure.empty() || !report.files.empty() ? SummaryText(report) : "";
    return text + StatusText(report, options.isStrict, console);
}

}  // namespace sealkeeper
