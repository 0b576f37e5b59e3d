// Credentials and expected values from the openssl command, which shares no code with what is
// tested.
#ifndef SEALKEEPER_TESTS_INSPECT_CREDENTIALS_OPENSSL_H
#define SEALKEEPER_TESTS_INSPECT_CREDENTIALS_OPENSSL_H

#include <cstdint>
#include <string>
#include <vector>

namespace sealkeeper::test {

// The folder of the development authority: ca.der, crl.der and ca_private.key.
[[nodiscard]] std::string AuthorityPath(const std::string& name);

// What `command`, run by a shell in `directory`, writes to its standard output, without the line
// feed at its end. The test fails when the command does.
std::string RunShell(const std::string& directory, const std::string& command);

struct ListOptions {
    // As openssl takes them.
    std::string lastUpdate = "20260101000000Z";
    std::string nextUpdate = "20760101000000Z";
    // Hexadecimal; none for an empty list.
    std::string revokedSerial = {};
    // PEM file of the issuer, and its key.
    std::string issuer = {};
    std::string issuerKey = AuthorityPath("ca_private.key");
};

// A revocation list in DER form, made in `directory`, by default by the development authority.
[[nodiscard]] std::vector<std::uint8_t> IssueList(const std::string& directory,
                                                  const ListOptions& options);

// A certificate of the development authority's name and key with other dates, in DER form.
[[nodiscard]] std::vector<std::uint8_t> IssueAuthority(const std::string& directory,
                                                       const std::string& notBefore,
                                                       const std::string& notAfter);

// Certificates in PEM form, in one file in `directory`, whose path it returns: the first, of the
// common name `name`, is issued by the second and so on; the authority issues the last. All but the
// first, of which there are `authorities`, may issue certificates.
[[nodiscard]] std::string IssueChain(const std::string& directory, const std::string& name,
                                     int authorities);

}  // namespace sealkeeper::test

#endif
