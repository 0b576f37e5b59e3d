#include "app/verification_summary.h"

#include "app/console_log.h"

namespace sealkeeper {

void VerificationSummary::Add(ResultCode code) {
    ++counts_[code];
    last_ = code;
}

void VerificationSummary::Print() const {
    Log(LogLevel::Info, "Verification summary:\n");
    Log(LogLevel::Info, "=======================================\n");
    for (const auto& [code, count] : counts_) {
        Log(LogLevel::Info, "Code %i (%s): %i files.\n\n", ResultCodeNumber(code),
            ResultCodeText(code), count);
    }
}

ResultCode VerificationSummary::Result() const {
    if (last_ != ResultCode::Ok) {
        return last_;
    }
    const auto firstFailure = counts_.upper_bound(ResultCode::Ok);
    return firstFailure == counts_.end() ? ResultCode::Ok : firstFailure->first;
}

}  // namespace sealkeeper
