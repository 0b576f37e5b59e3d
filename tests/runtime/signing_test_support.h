// Shared by tests of signatures: the keys and certificates of the test credentials.
#ifndef SEALKEEPER_TESTS_RUNTIME_SIGNING_TEST_SUPPORT_H
#define SEALKEEPER_TESTS_RUNTIME_SIGNING_TEST_SUPPORT_H

#include <gtest/gtest.h>
#include <mbedtls/ecp.h>
#include <mbedtls/pk.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/file_io.h"
#include "runtime/certificate_trust.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_contexts.h"
#include "support/credentials.h"

namespace sealkeeper::test {

// The signature area in both file formats.
using SignatureArea = std::array<std::uint8_t, 1024>;

[[nodiscard]] inline std::vector<std::uint8_t> FileBytes(const std::string& path) {
    const auto bytes = ReadWholeFile(path);
    EXPECT_TRUE(bytes.has_value()) << path;
    return bytes.value_or(std::vector<std::uint8_t>());
}

[[nodiscard]] inline std::vector<std::uint8_t> CertificateBytes(const std::string& kind) {
    return FileBytes(CertificatePath(kind));
}

inline void LoadKey(const std::string& kind, PrivateKey& key) {
    ASSERT_EQ(ParsePrivateKeyFile(key.Get(), PrivateKeyPath(kind).c_str()), 0) << kind;
}

// An object set up for elliptic curve keys, without a key: it cannot sign.
inline void MakeUnusableKey(PrivateKey& key) {
    ASSERT_EQ(mbedtls_pk_setup(key.Get(), mbedtls_pk_info_from_type(MBEDTLS_PK_ECKEY)), 0);
}

// The library's result of verifying `signature` over the SHA-256 digest of `data`, with the public
// key in the certificate of `kind`.
[[nodiscard]] inline int VerifySignature(const std::string& kind,
                                         std::span<const std::uint8_t> data,
                                         std::span<const std::uint8_t> signature) {
    Certificate certificate;
    EXPECT_EQ(ParseCertificate(CertificateBytes(kind), certificate), 0);
    Sha256Digest digest{};
    EXPECT_EQ(ComputeSha256(data, digest), 0);
    return mbedtls_pk_verify(&certificate.Get()->pk, MBEDTLS_MD_SHA256, digest.data(),
                             digest.size(), signature.data(), signature.size());
}

[[nodiscard]] inline bool IsAllZero(std::span<const std::uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

}  // namespace sealkeeper::test

#endif
