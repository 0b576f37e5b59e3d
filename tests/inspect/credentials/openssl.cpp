#include "inspect/credentials/openssl.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "runtime/signing_test_support.h"
#include "support/temp_directory.h"

namespace sealkeeper::test {
namespace {

// The configuration that "openssl ca" requires.
constexpr const char* kConfiguration =
    "[ca]\ndefault_ca = authority\n"
    "[authority]\ndatabase = index.txt\nserial = serial\nnew_certs_dir = .\npolicy = policy\n"
    "default_md = sha256\nunique_subject = no\npreserve = yes\nx509_extensions = extensions\n"
    "[policy]\norganizationName = optional\ncommonName = supplied\n"
    "[extensions]\nbasicConstraints = critical, CA:TRUE\n"
    "keyUsage = critical, keyCertSign, cRLSign\n"
    "[req]\nprompt = no\nutf8 = yes\nstring_mask = utf8only\ndistinguished_name = subject\n"
    "[subject]\nO = Sealkeeper\nCN = Development CA that protects nothing\n";

void WriteFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

}  // namespace

std::string AuthorityPath(const std::string& name) {
    return std::string(SEALKEEPER_DEVELOPMENT_TRUST_DIR) + "/" + name;
}

std::string RunShell(const std::string& directory, const std::string& command) {
    const TempDirectory own;
    const std::string whole = "cd '" + directory + "' && { " + command + "\n} >'" +
                              (own / "output") + "' 2>'" + (own / "errors") + "'";
    EXPECT_EQ(std::system(whole.c_str()), 0) << command << "\n" << ReadFile(own / "errors");
    std::string text = ReadFile(own / "output");
    if (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}

std::vector<std::uint8_t> IssueList(const std::string& directory, const ListOptions& options) {
    WriteFile(directory + "/list.cnf", kConfiguration);
    WriteFile(directory + "/index.txt", options.revokedSerial.empty()
                                            ? ""
                                            : "R\t491231235959Z\t260101000000Z\t" +
                                                  options.revokedSerial +
                                                  "\tunknown\t/CN=revoked\n");
    RunShell(directory,
             "openssl x509 -inform DER -in '" + AuthorityPath("ca.der") + "' -out authority.pem");
    const std::string issuer = options.issuer.empty() ? "authority.pem" : options.issuer;
    RunShell(directory,
             "openssl ca -gencrl -config list.cnf -cert '" + issuer + "' -keyfile '" +
                 options.issuerKey + "' -crl_lastupdate " + options.lastUpdate +
                 " -crl_nextupdate " + options.nextUpdate +
                 " -out list.pem && openssl crl -in list.pem -outform DER -out list.der");
    return FileBytes(directory + "/list.der");
}

std::vector<std::uint8_t> IssueAuthority(const std::string& directory, const std::string& notBefore,
                                         const std::string& notAfter) {
    WriteFile(directory + "/authority.cnf", kConfiguration);
    WriteFile(directory + "/index.txt", "");
    WriteFile(directory + "/serial", "01\n");
    RunShell(directory, "openssl req -new -config authority.cnf -key '" +
                            AuthorityPath("ca_private.key") +
                            "' -out request.pem && openssl ca -batch -notext -config authority.cnf "
                            "-selfsign -keyfile '" +
                            AuthorityPath("ca_private.key") + "' -startdate " + notBefore +
                            " -enddate " + notAfter +
                            " -in request.pem -out other.pem && "
                            "openssl x509 -in other.pem -outform DER -out other.der");
    return FileBytes(directory + "/other.der");
}

std::string IssueChain(const std::string& directory, const std::string& name, int authorities) {
    const std::string key = "'" + PrivateKeyPath("good") + "'";
    RunShell(directory,
             "printf 'basicConstraints = critical, CA:TRUE\\n' > may-issue\n"
             "openssl x509 -inform DER -in '" +
                 AuthorityPath("ca.der") + "' -out issuer.pem && cp '" +
                 AuthorityPath("ca_private.key") +
                 "' issuer.key && : > chain.pem\n"
                 "for level in $(seq " +
                 std::to_string(authorities) +
                 " -1 0); do\n"
                 "    subject=level$level extensions='-extfile may-issue'\n"
                 "    [ $level != 0 ] || { subject='" +
                 name + "' extensions=; }\n" + "    openssl req -new -key " + key +
                 " -subj \"/CN=$subject\" -out request.pem &&\n"
                 "    openssl x509 -req -sha256 -in request.pem -set_serial 9$level -days 400"
                 " $extensions -CA issuer.pem -CAkey issuer.key -out issued.pem &&\n"
                 "    cat issued.pem chain.pem > longer.pem && mv longer.pem chain.pem &&\n"
                 "    mv issued.pem issuer.pem && cp " +
                 key + " issuer.key || exit 1\ndone");
    return directory + "/chain.pem";
}

}  // namespace sealkeeper::test
