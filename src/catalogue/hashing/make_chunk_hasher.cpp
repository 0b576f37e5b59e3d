#include "catalogue/hashing/make_chunk_hasher.h"

#include "catalogue/hashing/sequential_chunk_hasher.h"
#include "catalogue/hashing/threaded_chunk_hasher.h"

namespace sealkeeper {

std::unique_ptr<ChunkHasher> MakeChunkHasher(std::size_t jobs, const Sha256Engine& engine) {
    if (jobs > 1) {
        auto threaded = std::make_unique<ThreadedChunkHasher>(engine, jobs);
        if (threaded->WorkerCount() > 0) {
            return threaded;
        }
    }
    return std::make_unique<SequentialChunkHasher>(engine);
}

}  // namespace sealkeeper
