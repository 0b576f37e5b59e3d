#include "inspect/credentials/credentials_command.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>

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
    std::int64_t warnDays = kDefaultWarnDays;
    bool asJson = false;
};

int RunCredentials(const CredentialsOptions& options, Console& console) {
    // A private key is read.
    SwitchOffCoreDumps();
    const JudgingTime time{
        std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()),
        options.warnDays};
    const CredentialFacts facts = GatherCredentialFacts(options.files, BuiltInTrustMaterial());
    const CredentialFindings findings = JudgeCredentials(facts, time);
    console.Write(options.asJson ? JsonText(CredentialJson(facts, findings, time.now))
                                 : CredentialText(facts, findings, time.now, console));
    return StatusOf(findings);
}

}  // namespace

void AddCredentialsCommand(CLI::App& program, Console& console, int& status) {
    auto options = std::make_shared<CredentialsOptions>();
    CLI::App* const command = program.add_subcommand(
        "credentials",
        "Say whether a certificate and its key can sign, and what is wrong where they cannot");
    command->add_option("--cert", options->files.certificate, "The certificate (-incert)")
        ->type_name("FILE")
        ->required();
    command->add_option("--key", options->files.key, "The private key (-inkey)")->type_name("FILE");
    command
        ->add_option("--product", options->files.productId,
                     "The product id that it is meant for (-productid)")
        ->type_name("ID");
    command
        ->add_option("--crl", options->files.revocationList,
                     "The revocation list for the catalogue (-incrl)")
        ->type_name("FILE");
    AddWarnDaysOption(*command, options->warnDays);
    command->add_flag("--json", options->asJson, "Report as JSON");
    command->callback([options, &console, &status] { status = RunCredentials(*options, console); });
}

}  // namespace sealkeeper
