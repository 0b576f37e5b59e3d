#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "runtime/key_der.h"
#include "runtime/key_file_tables.h"
#include "support/temp_directory.h"

namespace sealkeeper::test {
namespace {

using Keys = std::vector<EncodedKey>;

constexpr const char* kPkcs1Label = "RSA PRIVATE KEY";
constexpr const char* kPkcs8Label = "PRIVATE KEY";

// One octet, or an integer of one octet.
std::string Byte(int value) {
    return {static_cast<char>(value)};
}

const std::string& GoodKey() {
    static const std::string kKey = ReadFile(CredentialPath("key-forms", "pkcs1.der"));
    return kKey;
}

void Append(Keys& all, const Keys& more) {
    all.insert(all.end(), more.begin(), more.end());
}

Keys Joined(const std::vector<Keys>& lists) {
    Keys all;
    for (const Keys& list : lists) {
        Append(all, list);
    }
    return all;
}

// An RSA key, bare and within PKCS#8.
Keys Rsa(const std::string& name, const std::string& key) {
    return {{name, kPkcs1Label, key}, {name + ", within PKCS#8", kPkcs8Label, Pkcs8(key)}};
}

Keys WithPart(const std::string& name, RsaPart part, const std::string& element) {
    return Rsa(name, WithElement(GoodKey(), part, element));
}

using Edit = std::function<std::string(const std::string& content)>;

// A key for each of `parts`: the good key with the content of that integer edited by `edit`.
Keys WithEach(const std::string& name, const std::vector<RsaPart>& parts, const Edit& edit) {
    constexpr const char* kNames[] = {"version", "n", "e", "d", "p", "q", "dp", "dq", "qp"};
    Keys all;
    for (const RsaPart part : parts) {
        const std::string content = DerContent(DerElements(GoodKey()).at(part));
        Append(all, WithPart(std::string(kNames[part]) + " " + name, part, edit(content)));
    }
    return all;
}

const std::vector<RsaPart> kNumbers = {kModulus, kPublicExponent, kPrivateExponent, kPrime1,
                                       kPrime2,  kExponent1,      kExponent2,       kCoefficient};

std::string WithBitFlipped(std::string content, std::size_t index, int bit) {
    content.at(index) = static_cast<char>(content.at(index) ^ bit);
    return content;
}

std::string Even(const std::string& content) {
    return DerInteger(WithBitFlipped(content, content.size() - 1, 1));
}

// An integer whose length says more bytes than any file has.
std::string EndlessInteger(const std::string& content) {
    return "\x02\x84\x7F\xFF\xFF\xFF" + content;
}

// An integer with a length of five bytes, more than the library reads.
std::string LongLengthInteger(const std::string& content) {
    return "\x02\x85" + std::string(4, '\0') + "\x01" + content;
}

std::string Negative(const std::string& content) {
    return DerInteger(Byte(0x80) + content.substr(1));
}

std::string PaddedTo(std::size_t bytes, const std::string& content) {
    return DerInteger(Byte(1) + std::string(bytes - content.size(), '\0') + content);
}

Keys Unusual() {
    return Joined({
        Rsa("good", GoodKey()),
        WithEach(
            "with leading zeros", kNumbers,
            [](const std::string& content) { return DerInteger(std::string(2, '\0') + content); }),
        Rsa("length in a byte more", "\x30\x83" + Byte(0) + GoodKey().substr(2)),
        {{"algorithm without parameters", kPkcs8Label,
          Pkcs8(GoodKey(), Algorithm(std::string(kRsaIdentifiers) + "\x01", ""))}},
    });
}

Keys Trailing() {
    Keys all;
    for (const std::string& tail : {Byte(0), Byte('\n'), DerInteger(Byte(1)), GoodKey()}) {
        const std::string name = std::to_string(tail.size()) + " bytes after it";
        Append(all, Rsa(name, GoodKey() + tail));
        all.push_back({name + " PKCS#8", kPkcs8Label, Pkcs8(GoodKey()) + tail});
    }
    return all;
}

Keys WithAttributes() {
    const std::string usage =
        DerElement(kSequenceTag, std::string("\x06\x03\x55\x1D\x0F\x31\x04\x03\x02\x07\x80"));
    return {{"no attributes", kPkcs8Label,
             Pkcs8(GoodKey(), RsaAlgorithm(), DerElement(kAttributesTag, ""))},
            {"key usage", kPkcs8Label,
             Pkcs8(GoodKey(), RsaAlgorithm(), DerElement(kAttributesTag, usage))}};
}

Keys CutOff() {
    Keys all = Rsa("no elements", DerElement(kSequenceTag, ""));
    for (const std::size_t bytes : {std::size_t{1}, std::size_t{4}, std::size_t{9},
                                    GoodKey().size() / 2, GoodKey().size() - 1}) {
        const std::string name = "first " + std::to_string(bytes) + " bytes";
        Append(all, Rsa(name, GoodKey().substr(0, bytes)));
        all.push_back({name + " of PKCS#8", kPkcs8Label, Pkcs8(GoodKey()).substr(0, bytes)});
    }
    all.push_back({"PKCS#8 around nothing", kPkcs8Label, Pkcs8("")});
    return all;
}

// A sequence whose length is off by `difference`.
std::string WithWrongLength(int difference) {
    std::string key = GoodKey();
    const std::size_t bytes = DerContent(key).size() + static_cast<std::size_t>(difference);
    key.at(2) = static_cast<char>(bytes >> 8U);
    key.at(3) = static_cast<char>(bytes & 0xFFU);
    return key;
}

Keys OuterDamage() {
    return Joined(
        {Rsa("a set", "\x31" + GoodKey().substr(1)),
         Rsa("a byte too long", WithWrongLength(1)),
         Rsa("of no length told", "\x30\x80" + GoodKey().substr(4) + std::string(2, '\0')),
         WithEach("without bytes", {kVersion}, [](const std::string&) { return DerInteger(""); }),
         WithEach("of another type", {kVersion},
                  [](const std::string& content) { return DerElement(kOctetStringTag, content); }),
         WithEach("endless", {kVersion}, EndlessInteger),
         WithEach("of a long length", {kVersion}, LongLengthInteger),
         WithEach("negative", {kVersion},
                  [](const std::string&) { return DerInteger(Byte(0x80)); }),
         {{"PKCS#8 without version", kPkcs8Label,
           DerSequence({RsaAlgorithm(), DerElement(kOctetStringTag, GoodKey())})}}});
}

Keys OtherVersion() {
    return Joined({WithPart("two primes as several", kVersion, DerInteger(Byte(1))),
                   WithPart("unknown version", kVersion, DerInteger(Byte(2)))});
}

Keys OtherPkcs8Version() {
    const std::string good = Pkcs8(GoodKey());
    return {
        {"with the version of RFC 5958", kPkcs8Label, WithElement(good, 0, DerInteger(Byte(1)))},
        {"unknown version", kPkcs8Label, WithElement(good, 0, DerInteger(Byte(2)))},
        // Keys on curves have another version number.
        {"said to be of a curve", kPkcs8Label,
         Pkcs8(GoodKey(), Algorithm("\x2A\x86\x48\xCE\x3D\x02\x01",
                                    "\x06\x08\x2A\x86\x48\xCE\x3D\x03\x01\x07"))}};
}

// The keys of RFC 8410, 10.3: Ed25519 and, with another identifier, X25519.
std::string Curve25519Key(int identifier) {
    return "\x30\x2E" + DerInteger(Byte(0)) + Algorithm("\x2B\x65" + Byte(identifier), "") +
           "\x04\x22\x04\x20"
           "\xD4\xEE\x72\xDB\xF9\x13\x58\x4A\xD5\xB6\xD8\xF1\xF7\x69\xF8\xAD"
           "\x3A\xFE\x7C\x28\xCB\xF1\xD4\xFB\xE0\x97\xA8\x8F\x44\x75\x58\x42";
}

Keys OtherAlgorithm() {
    const std::string rsa = kRsaIdentifiers;
    return {{"RSASSA-PSS", kPkcs8Label, Pkcs8(GoodKey(), Algorithm(rsa + "\x0A", ""))},
            {"a signature's algorithm", kPkcs8Label, Pkcs8(GoodKey(), Algorithm(rsa + "\x0B", ""))},
            {"unknown", kPkcs8Label, Pkcs8(GoodKey(), Algorithm(rsa + "\x7F", ""))},
            {"RSA with parameters", kPkcs8Label,
             Pkcs8(GoodKey(), Algorithm(rsa + "\x01", DerSequence({})))},
            {"Ed25519", kPkcs8Label, Curve25519Key(0x70)}};
}

Keys NumbersThatCannotBe() {
    const auto one = [](const std::string&) { return DerInteger(Byte(1)); };
    const auto otherType = [](const std::string& content) {
        return DerElement(kOctetStringTag, content);
    };
    return Joined(
        {WithEach("zero", kNumbers, [](const std::string&) { return DerInteger(Byte(0)); }),
         WithEach("without bytes", kNumbers, [](const std::string&) { return DerInteger(""); }),
         WithEach("endless", kNumbers, EndlessInteger),
         WithEach("of a long length", kNumbers, LongLengthInteger),
         WithEach("of another type", kNumbers, otherType),
         WithEach("even", {kModulus, kPublicExponent, kPrime1, kPrime2}, Even),
         WithEach("one", {kModulus, kPublicExponent}, one),
         WithEach("of 2400 bits", {kPublicExponent},
                  [](const std::string& content) { return PaddedTo(299, content); }),
         WithEach("of 72000 bits", {kModulus, kPublicExponent},
                  [](const std::string& content) { return PaddedTo(8999, content); })});
}

Keys MissingNumbers() {
    const std::vector<std::string> elements = DerElements(GoodKey());
    Keys all;
    for (std::size_t count = kPublicExponent; count < kRsaPartCount; ++count) {
        const std::vector<std::string> some(elements.begin(),
                                            elements.begin() + static_cast<std::ptrdiff_t>(count));
        Append(all, Rsa("first " + std::to_string(count) + " numbers", DerSequence(some)));
    }
    std::vector<std::string> more = elements;
    more.push_back(DerInteger(Byte(1)));
    return Joined({all, Rsa("one more number", DerSequence(more)),
                   Rsa("length a byte too short", WithWrongLength(-1))});
}

Keys NumbersThatDoNotFit() {
    const std::vector<std::string> elements = DerElements(GoodKey());
    std::vector<std::string> swapped = elements;
    std::swap(swapped.at(kPrime1), swapped.at(kPrime2));
    const auto middle = [](const std::string& content) {
        return DerInteger(WithBitFlipped(content, content.size() / 2, 1));
    };
    const auto second = [](const std::string& content) {
        return DerInteger(WithBitFlipped(content, content.size() - 1, 2));
    };
    return Joined(
        {WithEach("with a bit flipped in the middle", kNumbers, middle),
         WithEach("with its second bit flipped", kNumbers, second),
         WithEach("with its first bit flipped",
                  {kPrivateExponent, kExponent1, kExponent2, kCoefficient}, Even),
         WithEach("negative", kNumbers, Negative),
         WithEach("of 72000 bits",
                  {kPrivateExponent, kPrime1, kPrime2, kExponent1, kExponent2, kCoefficient},
                  [](const std::string& content) { return PaddedTo(8999, content); }),
         WithEach("one", {kPrivateExponent, kPrime1, kPrime2, kExponent1, kExponent2, kCoefficient},
                  [](const std::string&) { return DerInteger(Byte(1)); }),
         Rsa("p and q exchanged", DerSequence(swapped))});
}

}  // namespace

std::vector<EncodedKeyRow> EncodedKeyTable() {
    return {
        {"as it should be; with more zeros than needed before a number; without the algorithm's parameters",
         {"taken", "taken"},
         {"taken", "taken"},
         Unusual()},
        {"more bytes after the key", {"taken", "15"}, {"taken", "11"}, Trailing()},
        {"attributes in PKCS#8", {"taken", "15"}, {"taken", "11"}, WithAttributes()},
        {"cut off", {"15", "15"}, {"11", "11"}, CutOff()},
        {"its outer structure or its version damaged", {"15", "15"}, {"11", "11"}, OuterDamage()},
        {"an RSA key of a version other than 0, as with more than two primes",
         {"15", "15"},
         {"14", "11"},
         OtherVersion()},
        {"PKCS#8 of a version other than 0, or an RSA key said to be of an elliptic curve",
         {"15", "15"},
         {"14", "14"},
         OtherPkcs8Version()},
        {"of another algorithm, such as RSASSA-PSS or Ed25519",
         {"15", "15"},
         {"11", "11"},
         OtherAlgorithm()},
        {"a number that cannot be: zero, even where it must be odd, reaching past the end, of another type",
         {"15", "15"},
         {"15", "11"},
         NumbersThatCannotBe()},
        {"numbers missing, or more of them", {"15", "15"}, {"15", "11"}, MissingNumbers()},
        {"numbers that do not fit each other or the certificate",
         {"no pair", "no pair"},
         {"no pair", "no pair"},
         NumbersThatDoNotFit()},
        {"X25519",
         {"15", "no pair"},
         {"11", "no pair"},
         {{"X25519", kPkcs8Label, Curve25519Key(0x6E)}}},
    };
}

}  // namespace sealkeeper::test
