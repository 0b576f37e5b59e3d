// Builds catalogues field by field, so that tests can store what no writer produces.
#ifndef SEALKEEPER_TESTS_CATALOGUE_STORED_CATALOGUE_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_STORED_CATALOGUE_SUPPORT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue_signature.h"
#include "catalogue/entry_block_reader.h"
#include "catalogue/lzw/lzw_test_support.h"
#include "catalogue/stored_entry.h"
#include "platform/little_endian.h"
#include "platform/text_encoding.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/sha256.h"
#include "runtime/signing_test_support.h"

namespace sealkeeper::test {

using Bytes = std::vector<std::uint8_t>;

inline constexpr std::size_t kHeaderBytes = 1052;
inline constexpr std::size_t kSignatureOffset = 8;
inline constexpr std::size_t kSignatureLengthOffset = 1032;
inline constexpr std::size_t kCrlLengthOffset = 1036;
inline constexpr std::size_t kCompressedLengthOffset = 1040;
inline constexpr std::size_t kEntryCountOffset = 1048;
inline constexpr std::size_t kDigestCountOffset = 524;
inline constexpr std::size_t kRecordBytes = 528;
inline constexpr std::size_t kStoredChunkBytes = 4'194'304;

// The largest number that a field holds.
inline constexpr std::uint32_t kMax32 = std::numeric_limits<std::uint32_t>::max();

template <typename Unsigned>
void StoreAt(Bytes& bytes, std::size_t offset, Unsigned number) {
    StoreLittleEndian(number, std::span(bytes).subspan(offset));
}

[[nodiscard]] inline Sha256Digest DigestOf(const std::string& text) {
    Sha256Digest digest{};
    const Bytes bytes(text.begin(), text.end());
    EXPECT_EQ(ComputeSha256(bytes, digest), 0);
    return digest;
}

// One digest for each chunk of `content`.
[[nodiscard]] inline std::vector<Sha256Digest> ChunkDigests(const std::string& content) {
    std::vector<Sha256Digest> digests;
    for (std::size_t at = 0; at < content.size(); at += kStoredChunkBytes) {
        digests.push_back(DigestOf(content.substr(at, kStoredChunkBytes)));
    }
    return digests;
}

[[nodiscard]] inline Bytes RecordOf(std::uint64_t sizeBytes, const std::u16string& path,
                                    const std::vector<Sha256Digest>& digests) {
    Bytes record(kRecordBytes);
    StoreAt<std::uint64_t>(record, 0, sizeBytes);
    StoreAt<std::uint32_t>(record, 8, static_cast<std::uint32_t>(path.rfind(u'/') + 1));
    for (std::size_t i = 0; i < path.size(); ++i) {
        StoreAt<std::uint16_t>(record, 12 + 2 * i, path[i]);
    }
    StoreAt(record, kDigestCountOffset, static_cast<std::uint32_t>(digests.size()));
    for (const Sha256Digest& digest : digests) {
        record.insert(record.end(), digest.begin(), digest.end());
    }
    return record;
}

// The record of a file at `path` that holds `content`.
[[nodiscard]] inline Bytes RecordOfFile(const std::u16string& path, const std::string& content) {
    return RecordOf(content.size(), path, ChunkDigests(content));
}

// The entry for `record`, read from a block of its own.
[[nodiscard]] inline std::shared_ptr<const StoredEntry> EntryOf(const Bytes& record) {
    EntryList entries;
    EXPECT_EQ(ReadEntryBlock(Compressed(record), 1, entries), ResultCode::Ok);
    return entries.at(0);
}

// As above, with the range of chunks to check.
[[nodiscard]] inline std::shared_ptr<const StoredEntry> EntryOf(const Bytes& record,
                                                                StoredEntry::CheckExtent extent) {
    struct OwnedEntry {
        OwnedEntry(const StoredEntry& read, std::u16string units, Bytes chunkDigests,
                   StoredEntry::CheckExtent checked)
            : path(std::move(units)),
              digests(std::move(chunkDigests)),
              entry({read.FileSizeBytes(), read.NamePosition(), path, digests}, checked) {}
        std::u16string path;
        Bytes digests;
        StoredEntry entry;
    };
    const auto read = EntryOf(record);
    const auto owned =
        std::make_shared<OwnedEntry>(*read, WideToUtf16(read->Path()),
                                     Bytes(record.begin() + kRecordBytes, record.end()), extent);
    return {owned, &owned->entry};
}

// An unsigned catalogue that holds `compressed`, valid or not.
[[nodiscard]] inline Bytes CatalogueOfCompressed(const Bytes& compressed, std::uint32_t entryCount,
                                                 const Bytes& crl = {}) {
    Bytes image(kHeaderBytes);
    const Bytes start = {0x51, 0x56, 0x52, 0x00, 4, 0, 1, 0};
    std::copy(start.begin(), start.end(), image.begin());
    StoreAt(image, kCrlLengthOffset, static_cast<std::uint32_t>(crl.size()));
    StoreAt(image, kCompressedLengthOffset, static_cast<std::uint32_t>(compressed.size()));
    StoreAt(image, kEntryCountOffset, entryCount);
    image.insert(image.end(), crl.begin(), crl.end());
    image.insert(image.end(), compressed.begin(), compressed.end());
    return image;
}

// An unsigned catalogue that holds the entry block `raw`, valid or not.
[[nodiscard]] inline Bytes CatalogueOf(const Bytes& raw, std::uint32_t entryCount,
                                       const Bytes& crl = {}) {
    // The compressor requires at least one byte.
    const Bytes compressed = raw.empty() ? Bytes{0x1F, 0x9D, 0x8C} : Compressed(raw);
    return CatalogueOfCompressed(compressed, entryCount, crl);
}

// Signs `image` from offset `signedFrom` with the key of `kind`. The signature and its length are
// zero while it is computed.
inline void SignImage(Bytes& image, const std::string& kind, std::size_t signedFrom = 0) {
    PrivateKey key;
    LoadKey(kind, key);
    std::fill(image.begin() + kSignatureOffset, image.begin() + kCrlLengthOffset, std::uint8_t{0});
    std::size_t length = 0;
    ASSERT_EQ(SignCatalogueImage(key.Get(), std::span(image).subspan(signedFrom),
                                 image.data() + kSignatureOffset, &length),
              ResultCode::Ok);
    StoreAt(image, kSignatureLengthOffset, static_cast<std::uint32_t>(length));
}

[[nodiscard]] inline std::string TextOfBytes(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

}  // namespace sealkeeper::test

#endif
