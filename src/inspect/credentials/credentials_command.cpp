#include "inspect/credentials/credentials_command.h"

#include <cstdint>
#include <memory>

#include "inspect/command_line/product_fault.h"
#include "inspect/credentials/credential_facts.h"
#include "inspect/credentials/credential_findings.h"
#include "inspect/credentials/credential_json.h"
#include "inspect/credentials/credential_text.h"
#include "inspect/credentials/warn_days.h"
#include "platform/core_dumps.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

struct CredentialsOptions {
    CredentialFiles files;
    std::uint64_t warnDays = kDefaultWarnDays;
    bool isJson = false;
};

int RunCredentials(const CredentialsOptions& options, Console& console) {
    // A core dump could hold the private key.
    SwitchOffCoreDumps();
    const JudgingTime time = JudgingTimeNow(options.warnDays);
    const CredentialFacts facts = GatherCredentialFacts(options.files, BuiltInTrustMaterial());
    const CredentialFindings findings = JudgeCredentials(facts, time);
    console.Write(options.isJson ? CredentialJson(facts, findings, time.now)
                                 : CredentialText(facts, findings, time.now, console));
    return StatusOf(findings);
}

}  // namespace

void AddCredentialsCommand(CommandLine& commandLine, Console& console) {
    auto options = std::make_shared<CredentialsOptions>();
    CredentialFiles& files = options->files;
    Command command = commandLine.AddCommand(
        "credentials",
        "Say whether a certificate and its key can sign, and what is wrong where they cannot");
    command.AddRequiredText({"--cert", "FILE", "The certificate (-incert)"}, files.certificate);
    command.AddText({"--key", "FILE", "The private key (-inkey)"}, files.key);
    command.AddText({"--product", "ID", "The product id that it is meant for (-productid)"},
                    files.productId, EmptyProductFault);
    command.AddText({"--crl", "FILE", "The revocation list for the catalogue (-incrl)"},
                    files.revocationList);
    AddWarnDaysOption(command, options->warnDays);
    command.AddFlag("--json", "Report as JSON", options->isJson);
    command.SetRun([options, &console] { return RunCredentials(*options, console); });
}

}  // namespace sealkeeper
