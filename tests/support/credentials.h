// The credentials that tests sign with. tests/support/issue_test_credentials.sh issues them from
// the development authority before the tests run, and explains each folder.
#ifndef SEALKEEPER_TESTS_SUPPORT_CREDENTIALS_H
#define SEALKEEPER_TESTS_SUPPORT_CREDENTIALS_H

#include <string>

namespace sealkeeper::test {

inline constexpr const char* kTestProductId = "TestProduct42";

// The path of `name` in the credentials of `kind`, such as "good" or "expired".
[[nodiscard]] inline std::string CredentialPath(const std::string& kind, const std::string& name) {
    return std::string(SEALKEEPER_TEST_CREDENTIALS_DIR) + "/" + kind + "/" + name;
}

[[nodiscard]] inline std::string PrivateKeyPath(const std::string& kind) {
    return CredentialPath(kind, "base_private.key");
}

[[nodiscard]] inline std::string CertificatePath(const std::string& kind) {
    return CredentialPath(kind, "base_public.cer");
}

}  // namespace sealkeeper::test

#endif
