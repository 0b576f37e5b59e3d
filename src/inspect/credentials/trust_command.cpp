#include "inspect/credentials/trust_command.h"

#include <cstdint>
#include <memory>

#include "inspect/credentials/trust_facts.h"
#include "inspect/credentials/trust_findings.h"
#include "inspect/credentials/trust_json.h"
#include "inspect/credentials/trust_text.h"
#include "inspect/credentials/warn_days.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

struct TrustOptions {
    std::uint64_t warnDays = kDefaultWarnDays;
    bool isJson = false;
};

int RunTrust(const TrustOptions& options, Console& console) {
    const JudgingTime time = JudgingTimeNow(options.warnDays);
    const TrustFacts facts = GatherTrustFacts(BuiltInTrustMaterial());
    CredentialFindings findings = JudgeTrust(facts, time);
    Append(findings, JudgeDevelopmentTrust(facts));
    PutErrorsFirst(findings);
    console.Write(options.isJson ? TrustJson(facts, findings, time.now)
                                 : TrustText(facts, findings, time.now, console));
    return StatusOf(findings);
}

}  // namespace

void AddTrustCommand(CommandLine& commandLine, Console& console) {
    auto options = std::make_shared<TrustOptions>();
    Command command = commandLine.AddCommand(
        "trust", "Show the authority and the revocation list that are built into sealkeeper");
    AddWarnDaysOption(command, options->warnDays);
    command.AddFlag("--json", "Report as JSON", options->isJson);
    command.SetRun([options, &console] { return RunTrust(*options, console); });
}

}  // namespace sealkeeper
