// Every way to hash chunks on this machine.
#ifndef SEALKEEPER_TESTS_THREADS_HASHING_VARIANTS_H
#define SEALKEEPER_TESTS_THREADS_HASHING_VARIANTS_H

#include <cctype>
#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/hashing/make_chunk_hasher.h"
#include "catalogue/hashing/sha256_engine.h"
#include "catalogue/hashing/sha256_kernels.h"

namespace sealkeeper::test {

struct HashingVariant {
    std::string name;
    // With a single kernel or with all of them.
    std::shared_ptr<const Sha256Engine> engine;
    std::size_t jobs;

    [[nodiscard]] std::unique_ptr<ChunkHasher> MakeHasher() const {
        return MakeChunkHasher(jobs, *engine);
    }
};

// As it appears in test names.
inline void PrintTo(const HashingVariant& variant, std::ostream* out) {
    *out << variant.name;
}

[[nodiscard]] inline std::string AlphanumericOf(const std::string& text) {
    std::string kept;
    for (const char character : text) {
        if (std::isalnum(static_cast<unsigned char>(character)) != 0) {
            kept += character;
        }
    }
    return kept;
}

// With a number of lanes that divides nothing evenly.
inline constexpr Sha256Kernel kThreeLanesKernel = {
    "three lanes", 3, [] { return true; },
    [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
        for (std::size_t lane = 0; lane < laneCount; ++lane) {
            kPortableSha256Kernel.compress(lanes + lane, 1, blockCount);
        }
    }};

// Each supported kernel alone, then all together, each with one job and with several.
[[nodiscard]] inline std::vector<HashingVariant> HashingVariants() {
    std::vector<HashingVariant> variants;
    const auto add = [&variants](const std::string& name,
                                 std::vector<const Sha256Kernel*> kernels) {
        const auto engine = std::make_shared<const Sha256Engine>(std::move(kernels));
        for (const std::size_t jobs : std::vector<std::size_t>{1, 2, 5}) {
            variants.push_back({name + "Jobs" + std::to_string(jobs), engine, jobs});
        }
    };
    const auto compiled = CompiledSha256Kernels();
    for (const Sha256Kernel* kernel : compiled) {
        if (kernel->isSupported()) {
            add(AlphanumericOf(kernel->name), {kernel});
        }
    }
    add("ThreeLanes", {&kThreeLanesKernel});
    add("All", {compiled.begin(), compiled.end()});
    return variants;
}

}  // namespace sealkeeper::test

#endif
