// What `show` has found out about a file; entries are not part of it, since there may be millions.
#ifndef SEALKEEPER_INSPECT_SHOW_SHOWN_FILE_H
#define SEALKEEPER_INSPECT_SHOW_SHOWN_FILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sealkeeper {

enum class ShownKind { Unknown, Catalogue, RuntimeConfiguration };

// A field of fixed place.
struct ShownField {
    // As the pages on the formats name it.
    const char* name = "";
    std::uint64_t offset = 0;
    std::uint64_t sizeBytes = 0;
    std::variant<std::uint64_t, std::string> value;
    // What the value stands for; may be empty.
    std::string meaning;
};

// What makes a file invalid.
struct InvalidFinding {
    std::string field;
    // In the file or, where `isInEntryBlock`, in the entry block once it is decompressed; of a
    // runtime.conf, in what it is once unscrambled.
    std::uint64_t offset = 0;
    bool isInEntryBlock = false;
    // Counted from 0.
    std::optional<std::uint64_t> entryIndex;
    std::string message;
    std::vector<std::string> likelyCauses;
};

struct SignerTrust {
    std::string productId;
    bool isTrusted = false;
    // Why it is not.
    std::string reason;
};

enum class SignatureState { Good, Bad, CertificateMissing, CertificateUnusable };

struct SignatureFacts {
    SignatureState state = SignatureState::Bad;
    // The file that the signature is, or would be, checked with.
    std::string certificatePath;
    // Why it is not good.
    std::string reason;
    // Where there is a certificate and a product id to ask for.
    std::optional<SignerTrust> trust;
};

struct RevocationFacts {
    std::uint64_t lengthBytes = 0;
    // Whether it is a list in DER, of which the rest is told.
    bool isList = false;
    std::string issuer;
    // ISO 8601, UTC; `nextUpdate` is empty where the list has none.
    std::string thisUpdate;
    std::string nextUpdate;
    std::uint64_t revoked = 0;
    // What it is in place of a list; empty where there is nothing.
    std::string remark;
};

struct EntryTotals {
    std::uint64_t entries = 0;
    // The largest number where there would be more.
    std::uint64_t fileBytes = 0;
    std::uint64_t chunks = 0;
    std::uint64_t oddEntries = 0;
    std::uint64_t largestFileBytes = 0;
    std::uint64_t largestChunkCount = 0;
};

struct ShownFile {
    std::string path;
    std::uint64_t sizeBytes = 0;
    ShownKind kind = ShownKind::Unknown;
    std::vector<ShownField> fields;
    // Nothing for a file that is valid.
    std::optional<InvalidFinding> invalid;
    std::optional<SignatureFacts> signature;
    // Of a catalogue.
    std::optional<RevocationFacts> revocationList;
    std::optional<EntryTotals> totals;
    // What readers take although it should not be, a sentence each without a full stop.
    std::vector<std::string> notes;
};

// Valid and well signed; valid, but not well signed, as far as can be told, or not trusted where
// that was asked for; not valid.
[[nodiscard]] int StatusOf(const ShownFile& file);

}  // namespace sealkeeper

#endif
