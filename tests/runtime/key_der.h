// Private keys put together byte by byte, to be wrong in one place: RSA keys (RFC 8017, A.1.2) and
// what PKCS#8 (RFC 5208) and PEM (RFC 7468) have around them. The bytes are held in strings.
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

// What stands in an RSA key, in its order.
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

// What follows the tag and the length at the start of `element`.
[[nodiscard]] std::string DerContent(const std::string& element);

// The elements that `sequence` holds, each with its tag and length. The test fails when it is not a
// sequence that holds elements alone.
[[nodiscard]] std::vector<std::string> DerElements(const std::string& sequence);

// A sequence that holds these elements.
[[nodiscard]] std::string DerSequence(const std::vector<std::string>& elements);

// `sequence` with one of its elements replaced.
[[nodiscard]] std::string WithElement(const std::string& sequence, std::size_t index,
                                      const std::string& element);

// What the object identifiers of RSA's algorithms begin with (RFC 8017, appendix C), as bytes.
inline constexpr const char* kRsaIdentifiers = "\x2A\x86\x48\x86\xF7\x0D\x01\x01";

// The algorithm of a PKCS#8 key: its object identifier as bytes, and its parameters.
[[nodiscard]] std::string Algorithm(const std::string& identifier, const std::string& parameters);
[[nodiscard]] std::string RsaAlgorithm();

// A PKCS#8 key around `key`. `attributes` are an element, or nothing.
[[nodiscard]] std::string Pkcs8(const std::string& key,
                                const std::string& algorithm = RsaAlgorithm(),
                                const std::string& attributes = "");

// PEM with this label around `der`, its lines ending in a line feed.
[[nodiscard]] std::string Pem(const std::string& label, const std::string& der);

}  // namespace sealkeeper::test

#endif
