#include "inspect/check/check_report.h"

namespace sealkeeper {

const char* RuntimeConfigurationVerdictText(RuntimeConfigurationVerdict verdict) {
    switch (verdict) {
        case RuntimeConfigurationVerdict::NotRead:
            return "not read";
        case RuntimeConfigurationVerdict::Good:
            return "good";
        case RuntimeConfigurationVerdict::CertificateNotRead:
            return "certificate not read";
        case RuntimeConfigurationVerdict::CertificateNotParsed:
            return "certificate not parsed";
        case RuntimeConfigurationVerdict::CertificateNotTrusted:
            return "certificate not trusted";
        case RuntimeConfigurationVerdict::NotValid:
            return "not valid";
    }
    return "";
}

const char* AdditionKindText(AdditionKind kind) {
    switch (kind) {
        case AdditionKind::UnlistedFile:
            return "unlisted file";
        case AdditionKind::UnlistedLink:
            return "unlisted link";
        case AdditionKind::UnlistedSpecialFile:
            return "unlisted special file";
        case AdditionKind::LinkWhereSealed:
            return "link where sealed";
        case AdditionKind::NotLookedAt:
            return "not looked at";
        case AdditionKind::MissingRuntimeConfiguration:
            return "missing runtime.conf";
        case AdditionKind::UnreadableRuntimeConfiguration:
            return "unreadable runtime.conf";
    }
    return "";
}

std::map<ResultCode, std::uint64_t> CountsByCode(const CheckReport& report) {
    std::map<ResultCode, std::uint64_t> counts;
    for (const CheckedFile& file : report.files) {
        ++counts[file.code];
    }
    return counts;
}

int StatusOf(const CheckReport& report, bool isStrict) {
    if (report.code != ResultCode::Ok) {
        return ResultCodeNumber(report.code);
    }
    return isStrict && !report.additions.empty() ? kAdditionsStatus : 0;
}

}  // namespace sealkeeper
