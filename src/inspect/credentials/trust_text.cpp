#include "inspect/credentials/trust_text.h"

#include "inspect/credentials/detail_text.h"
#include "inspect/credentials/fact_table.h"
#include "inspect/credentials/finding_text.h"

namespace sealkeeper {
namespace {

const char* OriginText(bool isDevelopment) {
    return isDevelopment ? "for development: protects nothing" : "not the development one";
}

void AddFile(const BuiltInFile& file, FactTable& table) {
    if (!file.fingerprint.empty()) {
        table.Add("SHA-256", file.fingerprint);
    }
    if (file.isDevelopment) {
        table.Add("origin", OriginText(*file.isDevelopment));
    }
}

void AddAuthority(const AuthorityFacts& facts, UtcTime now, FactTable& table) {
    table.Begin("Built-in authority", "");
    if (facts.certificate) {
        const CertificateDetails& authority = *facts.certificate;
        table.Add("subject", authority.subject);
        table.Add("serial", authority.serial);
        table.Add("key", KeyText(authority.key));
        table.Add("signed by", authority.signature);
        table.Add("valid", SpanText(authority.notBefore, authority.notAfter, now));
    }
    AddFile(facts.file, table);
}

void AddList(const BuiltInListFacts& facts, UtcTime now, FactTable& table) {
    table.Begin("Built-in revocation list", "");
    if (facts.list) {
        const ListDetails& list = *facts.list;
        table.Add("issuer", list.issuer);
        table.Add("signed by", list.signature);
        table.Add("revoked", RevokedText(list));
        table.Add("valid", ListSpanText(list, now));
    }
    AddFile(facts.file, table);
}

}  // namespace

std::string TrustText(const TrustFacts& facts, const CredentialFindings& findings, UtcTime now,
                      const Console& console) {
    FactTable table(console);
    AddAuthority(facts.authority, now, table);
    AddList(facts.revocationList, now, table);
    return table.Text() + FindingsText(findings, console);
}

}  // namespace sealkeeper
