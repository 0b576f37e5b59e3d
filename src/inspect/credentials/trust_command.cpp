#include "inspect/credentials/trust_command.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>

#include "inspect/credentials/trust_facts.h"
#include "inspect/credentials/trust_findings.h"
#include "inspect/credentials/trust_json.h"
#include "inspect/credentials/trust_text.h"
#include "inspect/credentials/warn_days.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

struct TrustOptions {
    std::int64_t warnDays = kDefaultWarnDays;
    bool asJson = false;
};

int RunTrust(const TrustOptions& options, Console& console) {
    const JudgingTime time{
        std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()),
        options.warnDays};
    const TrustFacts facts = GatherTrustFacts(BuiltInTrustMaterial());
    CredentialFindings findings = JudgeTrust(facts, time);
    Append(findings, JudgeDevelopmentTrust(facts));
    PutErrorsFirst(findings);
    console.Write(options.asJson ? JsonText(TrustJson(facts, findings, time.now))
                                 : TrustText(facts, findings, time.now, console));
    return StatusOf(findings);
}

}  // namespace

void AddTrustCommand(CLI::App& program, Console& console, int& status) {
    auto options = std::make_shared<TrustOptions>();
    CLI::App* const command = program.add_subcommand(
        "trust", "Show the authority and the revocation list that are built into sealkeeper");
    AddWarnDaysOption(*command, options->warnDays);
    command->add_flag("--json", options->asJson, "Report as JSON");
    command->callback([options, &console, &status] { status = RunTrust(*options, console); });
}

}  // namespace sealkeeper
