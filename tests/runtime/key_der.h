// Builds private keys byte by byte, so that one place can be wrong: RSA keys (RFC 8017, A.1.2),
// wrapped in PKCS#8 (RFC 5208) and PEM (RFC 7468). The bytes are held in strings.
#ifndef SEALKEEPER_TESTS_RUNTIME_KEY_DER_H
#define SEALKEEPER_TESTS_RUNTIME_KEY_DER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sealkeeper::test {

inline constexpr std::uint8_t kIntegerTag = 0x02;
inline constexpr std::uint8_t kOctetStringTag = 0x04;
inline constexpr std::uint8_t kSequenceTag = 0x30;
// The attributes at the end of a PKCS#8 key.
inline constexpr std::uint8_t kAttributesTag = 0xA0;

// The elements of an RSA key, in order.
enum RsaPart : std::size_t {
    kVersion,
    kModulus,
    kPublicExponent,
    kPrivateExponent,
    kPrime1,
    kPrime2,
    kExponent1,
    kExponent2,
    kCoefficient,
    kRsaPartCount
};

// An element with its tag and length (X.690, 8.1).
[[nodiscard]] std::string DerElement(std::uint8_t tag, const std::string& content);

[[nodiscard]] std::string DerInteger(const std::string& content);

// The content of `element`, after its tag and length.
[[nodiscard]] std::string DerContent(const std::string& element);

// The elements in `sequence`, each with its tag and length. The test fails if it is no sequence of
// elements.
[[nodiscard]] std::vector<std::string> DerElements(const std::string& sequence);

// A sequence that holds these elements.
[[nodiscard]] std::string DerSequence(const std::vector<std::string>& elements);

// `sequence` with one of its elements replaced.
[[nodiscard]] std::string WithElement(const std::string& sequence, std::size_t index,
                                      const std::string& element);

// The first bytes of the object identifiers of the RSA algorithms (RFC 8017, appendix C).
inline constexpr const char* kRsaIdentifiers = "\x2A\x86\x48\x86\xF7\x0D\x01\x01";

// The algorithm of a PKCS#8 key: its object identifier as bytes, and its parameters.
[[nodiscard]] std::string Algorithm(const std::string& identifier, const std::string& parameters);
[[nodiscard]] std::string RsaAlgorithm();

// A PKCS#8 key around `key`. `attributes` is one element, or empty.
[[nodiscard]] std::string Pkcs8(const std::string& key,
                                const std::string& algorithm = RsaAlgorithm(),
                                const std::string& attributes = "");

// PEM with this label around `der`. Lines end in line feeds.
[[nodiscard]] std::string Pem(const std::string& label, const std::string& der);

}  // namespace sealkeeper::test

#endif
