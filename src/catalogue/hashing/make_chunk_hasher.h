// Chooses how chunks are hashed: in the caller's thread or in several.
#ifndef SEALKEEPER_CATALOGUE_HASHING_MAKE_CHUNK_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_MAKE_CHUNK_HASHER_H

#include <cstddef>
#include <memory>

#include "catalogue/hashing/chunk_hasher.h"
#include "catalogue/hashing/sha256_engine.h"

namespace sealkeeper {

// A hasher on `engine`, which outlives it. With one job everything is done by the calls above; with
// more, that many threads read and hash, or as many as the system gives, if only the caller's own.
[[nodiscard]] std::unique_ptr<ChunkHasher> MakeChunkHasher(
    std::size_t jobs = 1, const Sha256Engine& engine = ProcessSha256Engine());

}  // namespace sealkeeper

#endif
