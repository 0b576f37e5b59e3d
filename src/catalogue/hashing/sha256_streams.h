// Several SHA-256 digests (FIPS 180-4) in the making at once, on the best code that this processor
// runs.
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_STREAMS_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_STREAMS_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "catalogue/hashing/sha256_kernel.h"
#include "runtime/sha256.h"

namespace sealkeeper {

inline constexpr std::size_t kMaxSha256Streams = 4;

// One stream's part in a step.
struct Sha256Step {
    std::size_t stream;
    const std::uint8_t* blocks;
};

// Streams are numbered 0 to `kMaxSha256Streams` - 1 and do not touch each other.
class Sha256Streams {
  public:
    Sha256Streams() = default;
    Sha256Streams(const Sha256Streams&) = delete;
    Sha256Streams& operator=(const Sha256Streams&) = delete;
    virtual ~Sha256Streams() = default;

    // What hashes: the name of the kernel, or "mbed TLS".
    [[nodiscard]] virtual const char* Name() const = 0;

    // Begins a digest on `stream`, whatever went on there.
    virtual void Start(std::size_t stream) = 0;

    // Takes in `blockCount` whole blocks of each stream of `steps`, which names up to
    // `kMaxSha256Streams` started streams, each once. Without steps or without blocks nothing
    // happens.
    virtual void Take(std::span<const Sha256Step> steps, std::size_t blockCount) = 0;

    // Takes in the last bytes of `stream`, less than a block, and ends its digest. Returns 0, or
    // the library's error when one has struck since `Start`.
    [[nodiscard]] virtual int Finish(std::size_t stream, std::span<const std::uint8_t> lastBytes,
                                     Sha256Digest& digest) = 0;
};

// The streams of `kernel`, which is usable.
[[nodiscard]] std::unique_ptr<Sha256Streams> MakeKernelSha256Streams(const Sha256Kernel& kernel);

// The streams of mbed TLS, which runs everywhere.
[[nodiscard]] std::unique_ptr<Sha256Streams> MakeMbedTlsSha256Streams();

// The streams of a compiled kernel of as many lanes, where one is usable, which is found out once
// in a process, else those of mbed TLS.
[[nodiscard]] std::unique_ptr<Sha256Streams> MakeSha256Streams();

}  // namespace sealkeeper

#endif
