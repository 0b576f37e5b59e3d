// The division of files into chunks, which are hashed separately.
#ifndef SEALKEEPER_CATALOGUE_HASHING_CHUNKS_H
#define SEALKEEPER_CATALOGUE_HASHING_CHUNKS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace sealkeeper {

// Every digest is SHA-256 (FIPS 180-4) of one chunk; the last chunk of a file may be short.
inline constexpr std::size_t kChunkBytes = 4'194'304;

// The number of chunks of `sizeBytes` bytes.
[[nodiscard]] constexpr std::uint64_t ChunkCountOf(std::uint64_t sizeBytes) {
    return sizeBytes / kChunkBytes + (sizeBytes % kChunkBytes != 0 ? 1 : 0);
}

// Where chunk `index` of a file of `sizeBytes` bytes begins. Chunks past the end begin at the end.
[[nodiscard]] constexpr std::uint64_t ChunkOffset(std::uint64_t index, std::uint64_t sizeBytes) {
    return index < sizeBytes / kChunkBytes + 1 ? std::min(index * kChunkBytes, sizeBytes)
                                               : sizeBytes;
}

// The length of chunk `index` in bytes. Chunks past the end are empty.
[[nodiscard]] constexpr std::size_t ChunkLength(std::uint64_t index, std::uint64_t sizeBytes) {
    return static_cast<std::size_t>(
        std::min<std::uint64_t>(kChunkBytes, sizeBytes - ChunkOffset(index, sizeBytes)));
}

}  // namespace sealkeeper

#endif
