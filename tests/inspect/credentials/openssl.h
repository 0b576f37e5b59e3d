// Credentials and expected values from the openssl command, which shares no code with the code
// under test.
#ifndef SEALKEEPER_TESTS_INSPECT_CREDENTIALS_OPENSSL_H
#define SEALKEEPER_TESTS_INSPECT_CREDENTIALS_OPENSSL_H

#include <cstdint>
#include <string>
#include <vector>

namespace sealkeeper::test {

// The folder of the development authority: ca.der, crl.der and ca_private.key.
[[nodiscard]] std::string AuthorityPath(const std::string& name);

// Runs `command` in a shell in `directory` and returns its standard output, without the final line
// feed. The test fails if the command fails.
std::string RunShell(const std::string& directory, const std::string& command);

struct ListOptions {
    // In openssl's format.
    std::string lastUpdate = "20260101000000Z";
    std::string nextUpdate = "20760101000000Z";
    // Hexadecimal; empty for an empty list.
    std::string revokedSerial = {};
    // The PEM files of the issuer and its key.
    std::string issuer = {};
    std::string issuerKey = AuthorityPath("ca_private.key");
};

// Issues a revocation list in DER form, in `directory`. By default the issuer is the development
// authority.
[[nodiscard]] std::vector<std::uint8_t> IssueList(const std::string& directory,
                                                  const ListOptions& options);

// A DER certificate with the name and key of the development authority, but other dates.
[[nodiscard]] std::vector<std::uint8_t> IssueAuthority(const std::string& directory,
                                                       const std::string& notBefore,
                                                       const std::string& notAfter);

// Issues a chain of certificates in one PEM file in `directory`, and returns its path. The first
// has the common name `name`. Each is issued by the next, and the last by the authority. All after
// the first, `authorities` in number, may issue certificates.
[[nodiscard]] std::string IssueChain(const std::string& directory, const std::string& name,
                                     int authorities);

}  // namespace sealkeeper::test

#endif
