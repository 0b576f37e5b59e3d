#include "inspect/credentials/credential_text.h"

#include "inspect/credentials/chain_state.h"
#include "inspect/credentials/detail_text.h"
#include "inspect/credentials/fact_table.h"
#include "inspect/credentials/finding_text.h"
#include "inspect/report/code_text.h"
#include "inspect/report/name_list.h"

namespace sealkeeper {
namespace {

void AddMode(const ExaminedFile& file, FactTable& table) {
    if (file.mode) {
        table.Add("file mode", ModeText(*file.mode));
    }
}

// The names that may be a product id, and where they are from.
std::string ProductText(const CertificateDetails& certificate) {
    const std::vector<std::string>& names = ComparedNames(certificate);
    if (!certificate.hasAlternativeNames) {
        return names.empty() ? "none: there is no common name"
                             : QuotedNameList(names) + " (common name)";
    }
    const std::string passedOver = "the common name " + QuotedNameList(certificate.commonNames) +
                                   " does not count beside alternative names";
    return names.empty() ? "none: " + passedOver
                         : QuotedNameList(names) + " (DNS names; " + passedOver + ")";
}

void AddChain(const CertificateFacts& certificate, FactTable& table) {
    switch (ChainOf(certificate)) {
        case ChainState::Authority:
            return table.Add("chain", Style::Good,
                             "issued by the built-in authority, whose signature is good");
        case ChainState::ForeignAuthority:
            return table.Add("chain", Style::Bad,
                             "names the built-in authority, whose signature it is not");
        case ChainState::SelfSigned:
            return table.Add("chain", Style::Bad, "issued by itself");
        case ChainState::OtherIssuer:
            return table.Add("chain", Style::Bad, "not issued by the built-in authority");
        case ChainState::NotChecked:
            return table.Add("chain", Style::Bad, "not checked");
    }
}

void AddRevocation(const CredentialFacts& facts, FactTable& table) {
    switch (RevocationOf(facts.certificate, facts.trust)) {
        case RevocationState::NotRevoked:
            return table.Add("revocation", Style::Good, "not on the built-in list");
        case RevocationState::Revoked:
            return table.Add("revocation", Style::Bad, "on the built-in list");
        case RevocationState::NotChecked:
            return table.Add("revocation", Style::Bad, "not checked");
    }
}

void AddCertificate(const CredentialFacts& facts, UtcTime now, FactTable& table) {
    table.Begin("Certificate", facts.certificate.file.path);
    if (facts.certificate.details) {
        const CertificateDetails& certificate = *facts.certificate.details;
        table.Add("subject", certificate.subject);
        table.Add("product id", ProductText(certificate));
        table.Add("serial", certificate.serial);
        table.Add("valid", SpanText(certificate.notBefore, certificate.notAfter, now));
        table.Add("key", KeyText(certificate.key));
        table.Add("issuer", certificate.issuer);
        table.Add("signed by", certificate.signature);
        AddChain(facts.certificate, table);
        AddRevocation(facts, table);
    }
    AddMode(facts.certificate.file, table);
}

void AddKey(const KeyFacts& key, FactTable& table) {
    table.Begin("Private key", key.file.path);
    if (key.details) {
        table.Add("key", KeyText(*key.details));
    }
    if (key.pairCode) {
        const bool isPair = *key.pairCode == ResultCode::Ok;
        table.Add("pair", isPair ? Style::Good : Style::Bad,
                  isPair ? "belongs to the certificate" : "does not belong to the certificate");
    }
    AddMode(key.file, table);
}

void AddList(const GivenListFacts& list, UtcTime now, FactTable& table) {
    table.Begin("Revocation list for the catalogue", list.file.path);
    if (list.list) {
        table.Add("issuer", list.list->issuer);
        table.Add("signed by", list.list->signature);
        table.Add("revoked", RevokedText(*list.list));
        table.Add("valid", ListSpanText(*list.list, now));
    }
    AddMode(list.file, table);
}

void AddTrust(const TrustFacts& trust, UtcTime now, FactTable& table) {
    table.Begin("Built into sealkeeper", "");
    if (trust.authority.certificate) {
        const CertificateDetails& authority = *trust.authority.certificate;
        table.Add("authority", authority.subject);
        table.Add("valid", SpanText(authority.notBefore, authority.notAfter, now));
    }
    if (trust.revocationList.list) {
        table.Add("revoked", RevokedText(*trust.revocationList.list));
        table.Add("list valid", ListSpanText(*trust.revocationList.list, now));
    }
}

std::string UncheckedText(const CredentialFacts& facts) {
    std::string text;
    if (!facts.key) {
        text += "Not checked: the private key (name it by --key).\n";
    }
    if (!facts.productId) {
        text += "Not checked: the product id (give it by --product).\n";
    }
    return text;
}

std::string VerdictText(const CredentialFacts& facts, const Console& console) {
    const ResultCode code = GenerateCode(facts);
    if (code == ResultCode::Ok) {
        return console.Styled(Style::Good, "Generate would take these credentials.") + "\n";
    }
    return console.Styled(Style::Bad, "Generate would end with " + CodeText(code) + ".") + "\n";
}

}  // namespace

std::string CredentialText(const CredentialFacts& facts, const CredentialFindings& findings,
                           UtcTime now, const Console& console) {
    FactTable table(console);
    AddCertificate(facts, now, table);
    if (facts.key) {
        AddKey(*facts.key, table);
    }
    if (facts.revocationList) {
        AddList(*facts.revocationList, now, table);
    }
    AddTrust(facts.trust, now, table);
    return table.Text() + FindingsText(findings, console) + UncheckedText(facts) +
           VerdictText(facts, console);
}

}  // namespace sealkeeper
