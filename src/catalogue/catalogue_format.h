// The layout of a hash catalogue, shared by writer and reader. All numbers are little-endian. There
// is no padding except the zeros at the end of the signature area and of each path field.
//
// A file is the header, the revocation-list block, and the compressed entry block; the entry block
// is a sequence of entry records, each followed by its digests.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_FORMAT_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_FORMAT_H

#include <cstddef>
#include <cstdint>
#include <limits>

#include "runtime/signed_file_format.h"

namespace sealkeeper {

// Lengths and counts are stored in 32 bits.
inline constexpr std::uint64_t kMaxStoredLength = std::numeric_limits<std::uint32_t>::max();

// Adding two lengths, or counting bits, cannot overflow.
static_assert(sizeof(std::size_t) == sizeof(std::uint64_t));

// A catalogue and the certificate that it is verified with have the same file name but for these.
inline constexpr const char* kCatalogueExtension = ".bin";
inline constexpr const char* kCertificateExtension = ".cer";

namespace catalogue_header {

inline constexpr std::uint16_t kFormatVersion = 4;
// The layout whose signature covers the whole file.
inline constexpr std::uint16_t kSignatureLayout = 1;

inline constexpr std::size_t kMagicOffset = 0;
inline constexpr std::size_t kFormatVersionOffset = 4;
inline constexpr std::size_t kSignatureLayoutOffset = 6;
inline constexpr std::size_t kSignatureOffset = 8;
inline constexpr std::size_t kSignatureLengthOffset = 1032;
inline constexpr std::size_t kCrlLengthOffset = 1036;
inline constexpr std::size_t kCompressedLengthOffset = 1040;
inline constexpr std::size_t kRawLengthOffset = 1044;
inline constexpr std::size_t kEntryCountOffset = 1048;
inline constexpr std::size_t kSizeBytes = 1052;

static_assert(kSignatureOffset + signed_file::kSignatureAreaBytes == kSignatureLengthOffset);
static_assert(kEntryCountOffset + sizeof(std::uint32_t) == kSizeBytes);

}  // namespace catalogue_header

namespace entry_record {

inline constexpr std::size_t kFileSizeOffset = 0;
inline constexpr std::size_t kNamePositionOffset = 8;
inline constexpr std::size_t kPathOffset = 12;
inline constexpr std::size_t kPathUnits = 256;
inline constexpr std::size_t kPathBytes = kPathUnits * sizeof(char16_t);
inline constexpr std::size_t kDigestCountOffset = 524;
inline constexpr std::size_t kFixedBytes = 528;
// Digests follow the fixed part.
inline constexpr std::size_t kDigestBytes = 32;

static_assert(kPathOffset + kPathBytes == kDigestCountOffset);
static_assert(kDigestCountOffset + sizeof(std::uint32_t) == kFixedBytes);

// One unit is reserved for the terminating zero.
inline constexpr std::size_t kMaxPathUnits = kPathUnits - 1;
// An aliased path is stored with four bytes per character, the terminating zero included.
inline constexpr std::size_t kMaxAliasedPathCharacters = kPathBytes / sizeof(char32_t) - 1;

}  // namespace entry_record

}  // namespace sealkeeper

#endif
