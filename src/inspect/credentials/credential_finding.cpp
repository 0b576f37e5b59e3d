#include "inspect/credentials/credential_finding.h"

#include <mbedtls/x509.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "inspect/report/command_status.h"
#include "runtime/mbedtls_result.h"

namespace sealkeeper {
namespace {

bool IsError(const CredentialFinding& finding) {
    return finding.severity == FindingSeverity::Error;
}

}  // namespace

CredentialFinding MakeError(const char* name, std::optional<ResultCode> code, std::string message,
                            Cure cure) {
    return {FindingSeverity::Error, name, std::move(message), std::move(cure), code};
}

CredentialFinding MakeWarning(const char* name, std::string message, Cure cure) {
    return {FindingSeverity::Warning, name, std::move(message), std::move(cure), std::nullopt};
}

ResultCode CodeOfFlag(std::uint32_t flag) {
    return MapX509Error(MBEDTLS_ERR_X509_CERT_VERIFY_FAILED, flag);
}

const char* SeverityText(FindingSeverity severity) {
    switch (severity) {
        case FindingSeverity::Warning:
            return "warning";
        case FindingSeverity::Error:
            return "error";
    }
    return "";
}

bool EndsSoon(UtcTime end, const JudgingTime& time) {
    return !IsPast(end, time.now) && end - time.now <= std::chrono::days(time.warnDays);
}

void Append(CredentialFindings& findings, CredentialFindings more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings));
}

void PutErrorsFirst(CredentialFindings& findings) {
    std::stable_partition(findings.begin(), findings.end(), IsError);
}

int StatusOf(const CredentialFindings& findings) {
    if (findings.empty()) {
        return kStatusGood;
    }
    return std::any_of(findings.begin(), findings.end(), IsError) ? kStatusError : kStatusWarning;
}

}  // namespace sealkeeper
