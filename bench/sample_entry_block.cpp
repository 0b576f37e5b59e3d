#include "sample_entry_block.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <span>
#include <string>
#include <string_view>

#include "catalogue/catalogue_format.h"
#include "catalogue/hashing/chunks.h"
#include "platform/little_endian.h"

namespace sealkeeper::bench {
namespace {

constexpr std::size_t kMaxChunks = 3;
constexpr std::size_t kFilesPerDirectory = 200;

// The standard defines the output of this generator, but that of distributions differs between
// libraries.
using Random = std::mt19937_64;

std::size_t Below(Random& random, std::size_t limit) {
    return random() % limit;
}

std::string MakePath(Random& random, std::size_t index) {
    constexpr std::array<std::string_view, 5> kKinds = {"Audio", "Characters", "Levels", "Props",
                                                        "Vehicles"};
    constexpr std::array<std::string_view, 6> kSubjects = {
        "harbour_crane", "lighthouse", "fisherman", "cargo_ship", "market_stall", "storm_ambience"};
    constexpr std::array<std::string_view, 6> kEndings = {
        "_albedo.tex", "_normal.tex", ".mesh", "_walk.anim", ".material", "_loop.ogg"};
    char path[128];
    const std::size_t directory = index / kFilesPerDirectory;
    const int length = std::snprintf(path, sizeof path, "Content/%s/set_%03zu/%s_%06zu%s",
                                     kKinds[directory % kKinds.size()].data(), directory,
                                     kSubjects[Below(random, kSubjects.size())].data(), index,
                                     kEndings[Below(random, kEndings.size())].data());
    return {path, static_cast<std::size_t>(length)};
}

void AppendEntry(Random& random, std::size_t index, std::vector<std::uint8_t>& block) {
    const std::string path = MakePath(random, index);
    const std::size_t digestCount = 1 + Below(random, kMaxChunks);
    const std::uint64_t fileSizeBytes =
        (digestCount - 1) * kChunkBytes + 1 + Below(random, kChunkBytes);
    const std::size_t start = block.size();
    block.resize(start + entry_record::kFixedBytes + digestCount * entry_record::kDigestBytes);
    const std::span<std::uint8_t> record = std::span(block).subspan(start);
    StoreLittleEndian(fileSizeBytes, record.subspan(entry_record::kFileSizeOffset));
    StoreLittleEndian(static_cast<std::uint32_t>(path.rfind('/') + 1),
                      record.subspan(entry_record::kNamePositionOffset));
    for (std::size_t i = 0; i < path.size(); ++i) {
        record[entry_record::kPathOffset + i * sizeof(char16_t)] =
            static_cast<std::uint8_t>(path[i]);
    }
    StoreLittleEndian(static_cast<std::uint32_t>(digestCount),
                      record.subspan(entry_record::kDigestCountOffset));
    const std::span<std::uint8_t> digests = record.subspan(entry_record::kFixedBytes);
    std::generate(digests.begin(), digests.end(),
                  [&random] { return static_cast<std::uint8_t>(random()); });
}

}  // namespace

std::vector<std::uint8_t> MakeSampleEntryBlock(std::size_t entryCount) {
    Random random(entryCount);
    std::vector<std::uint8_t> block;
    for (std::size_t i = 0; i < entryCount; ++i) {
        AppendEntry(random, i, block);
    }
    return block;
}

}  // namespace sealkeeper::bench
