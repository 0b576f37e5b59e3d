// Chooses where chunks are hashed: in the caller's thread or in threads of their own.
#ifndef SEALKEEPER_CATALOGUE_HASHING_MAKE_CHUNK_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_MAKE_CHUNK_HASHER_H

#include <cstddef>
#include <memory>

#include "catalogue/hashing/chunk_hasher.h"
#include "catalogue/hashing/sha256_engine.h"

namespace sealkeeper {

// A hasher that uses `engine`, which must outlive it. With one job, the calls of the hasher read
// and hash in the caller's thread. With more, that many threads do, or as many as the system
// grants; if it grants none, the caller's thread.
[[nodiscard]] std::unique_ptr<ChunkHasher> MakeChunkHasher(
    std::size_t jobs = 1, const Sha256Engine& engine = ProcessSha256Engine());

}  // namespace sealkeeper

#endif
