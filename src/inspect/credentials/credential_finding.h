// What is wrong with credentials or with the trust material, and what to do about it.
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

// What to do: sentences and, where there is one to run, a command for a POSIX shell.
struct Cure {
    std::string text;
    std::string command = {};
};

struct CredentialFinding {
    FindingSeverity severity = FindingSeverity::Error;
    // Stays as it is, for scripts: "certificate-expired".
    const char* name = "";
    // A sentence or more.
    std::string message;
    Cure cure;
    // What generate returns where nothing else is wrong; nothing where it does not mind.
    std::optional<ResultCode> code;
};

using CredentialFindings = std::vector<CredentialFinding>;

// By which time is judged.
struct JudgingTime {
    UtcTime now;
    // What ends within that many days is warned of.
    std::int64_t warnDays = 0;
};

[[nodiscard]] CredentialFinding MakeError(const char* name, std::optional<ResultCode> code,
                                          std::string message, Cure cure);
[[nodiscard]] CredentialFinding MakeWarning(const char* name, std::string message, Cure cure);

// What generate returns for a certificate that the library refuses for `flag` alone, one of
// MBEDTLS_X509_BADCERT_... and MBEDTLS_X509_BADCRL_....
ResultCode CodeOfFlag(std::uint32_t flag);

// "warning", "error".
[[nodiscard]] const char* SeverityText(FindingSeverity severity);

// Whether `end` is not past, but will be within the days that are warned of.
[[nodiscard]] bool EndsSoon(UtcTime end, const JudgingTime& time);

void Append(CredentialFindings& findings, CredentialFindings more);

// Puts errors before warnings and leaves the order otherwise.
void PutErrorsFirst(CredentialFindings& findings);

// `kStatusGood`, `kStatusWarning` or `kStatusError`, by the worst of them.
[[nodiscard]] int StatusOf(const CredentialFindings& findings);

}  // namespace sealkeeper

#endif
