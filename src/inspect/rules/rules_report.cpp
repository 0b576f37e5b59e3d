#include "inspect/rules/rules_report.h"

#include "inspect/report/code_text.h"
#include "inspect/report/command_status.h"

namespace sealkeeper {
namespace {

void Count(FileTotal& total, const JudgedFile& file) {
    ++total.files;
    total.bytes += file.sizeBytes;
}

}  // namespace

const char* LeftOutReasonText(LeftOutReason reason) {
    switch (reason) {
        case LeftOutReason::Hidden:
            return "hidden";
        case LeftOutReason::Link:
            return "link";
        case LeftOutReason::DanglingLink:
            return "dangling link";
        case LeftOutReason::ExcludedPath:
            return "excluded path";
        case LeftOutReason::ExcludedExtension:
            return "extension";
        case LeftOutReason::NoExtension:
            return "no extension";
        case LeftOutReason::TooLarge:
            return "size";
        case LeftOutReason::Unlistable:
            return "unlistable";
        case LeftOutReason::NotRegularFile:
            return "not a regular file";
        case LeftOutReason::Unreachable:
            return "unreachable";
        case LeftOutReason::NotIncluded:
            return "not included";
    }
    return "";
}

std::string RefusalText(const Refusal& refusal) {
    return "generate fails with " + CodeText(refusal.code) + ": " + refusal.message;
}

RulesTotals TotalsOf(const RulesReport& report) {
    RulesTotals totals;
    for (const JudgedFile& file : report.files) {
        if (!file.leftOut) {
            Count(totals.sealed, file);
            continue;
        }
        Count(totals.leftOut, file);
        Count(totals.leftOutBy[*file.leftOut], file);
    }
    return totals;
}

int StatusOf(const RulesReport& report) {
    if (report.refusal) {
        return kStatusError;
    }
    return report.warnings.empty() ? kStatusGood : kStatusWarning;
}

}  // namespace sealkeeper
