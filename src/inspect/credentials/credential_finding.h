// Findings about credentials or trust material, with their cures.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FINDING_H
#define SEALKEEPER_INSPECT_CREDENTIALS_CREDENTIAL_FINDING_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "inspect/x509/utc_time.h"

namespace sealkeeper {

enum class FindingSeverity { Warning, Error };

// What to do: one sentence or more, and a POSIX shell command if there is one to run.
struct Cure {
    std::string text;
    std::string command = {};
};

struct CredentialFinding {
    FindingSeverity severity = FindingSeverity::Error;
    // A stable identifier for scripts: "certificate-expired".
    const char* name = "";
    // One sentence or more.
    std::string message;
    Cure cure;
    // What generate returns if nothing else is wrong; empty if it does not fail.
    std::optional<ResultCode> code;
};

using CredentialFindings = std::vector<CredentialFinding>;

// The time that findings are based on.
struct JudgingTime {
    UtcTime now;
    // Warn of dates that are at most this many days away.
    std::int64_t warnDays = 0;
};

[[nodiscard]] CredentialFinding MakeError(const char* name, std::optional<ResultCode> code,
                                          std::string message, Cure cure);
[[nodiscard]] CredentialFinding MakeWarning(const char* name, std::string message, Cure cure);

// What generate returns if `flag` is the library's only objection to a certificate. `flag` is one
// of MBEDTLS_X509_BADCERT_... and MBEDTLS_X509_BADCRL_....
ResultCode CodeOfFlag(std::uint32_t flag);

// "warning", "error".
[[nodiscard]] const char* SeverityText(FindingSeverity severity);

// Whether `end` is still ahead, but within the warning period.
[[nodiscard]] bool EndsSoon(UtcTime end, const JudgingTime& time);

void Append(CredentialFindings& findings, CredentialFindings more);

// A stable sort: errors before warnings.
void PutErrorsFirst(CredentialFindings& findings);

// `kStatusGood`, `kStatusWarning` or `kStatusError`, by the worst finding.
[[nodiscard]] int StatusOf(const CredentialFindings& findings);

}  // namespace sealkeeper

#endif
