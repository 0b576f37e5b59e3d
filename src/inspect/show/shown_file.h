// What `show` found out about a file. Entries are not included, since there may be millions.
#ifndef SEALKEEPER_INSPECT_SHOW_SHOWN_FILE_H
#define SEALKEEPER_INSPECT_SHOW_SHOWN_FILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace sealkeeper {

enum class ShownKind { Unknown, Catalogue, RuntimeConfiguration };

// A field at a fixed offset.
struct ShownField {
    // As in the documents about the formats.
    const char* name = "";
    std::uint64_t offset = 0;
    std::uint64_t sizeBytes = 0;
    std::variant<std::uint64_t, std::string> value;
    // The meaning of the value; may be empty.
    std::string meaning;
};

// Why a file is invalid.
struct InvalidFinding {
    std::string field;
    // In the file; if `isInEntryBlock`, in the decompressed entry block; for a runtime.conf, after
    // unscrambling.
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
    // Why it is not trusted.
    std::string reason;
};

enum class SignatureState { Good, Bad, CertificateMissing, CertificateUnusable };

struct SignatureFacts {
    SignatureState state = SignatureState::Bad;
    // The certificate that checks the signature; it may be missing.
    std::string certificatePath;
    // Why the signature is not good.
    std::string reason;
    // Empty without a certificate or a product id.
    std::optional<SignerTrust> trust;
};

struct RevocationFacts {
    std::uint64_t lengthBytes = 0;
    // Whether it is a DER list. The issuer, the dates and the count are set only then.
    bool isList = false;
    std::string issuer;
    // ISO 8601, UTC. `nextUpdate` is empty if the list has none.
    std::string thisUpdate;
    std::string nextUpdate;
    std::uint64_t revoked = 0;
    // What the block holds instead of a list; empty if there is no block.
    std::string remark;
};

struct EntryTotals {
    std::uint64_t entries = 0;
    // Saturates instead of overflowing.
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
    // Empty for a valid file.
    std::optional<InvalidFinding> invalid;
    std::optional<SignatureFacts> signature;
    // Catalogues only.
    std::optional<RevocationFacts> revocationList;
    std::optional<EntryTotals> totals;
    // Oddities that readers accept, each a sentence without a full stop.
    std::vector<std::string> notes;
};

// `kStatusGood` if the file is valid and well signed, and trusted if that was asked for.
// `kStatusWarning` if only the signature or the trust is at fault or cannot be checked.
// `kStatusError` if the file is not valid.
[[nodiscard]] int StatusOf(const ShownFile& file);

}  // namespace sealkeeper

#endif
