// Tests both forms of the rounds in plain C++, and so on every processor.
#include "catalogue/hashing/sha256_wide_rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "catalogue/hashing/sha256_test_support.h"

namespace sealkeeper {
namespace {

constexpr std::size_t kElements = 5;

// A vector whose operations are loops.
struct PlainVector {
    using Type = std::array<std::uint32_t, kElements>;
    static constexpr std::size_t kLanes = kElements;

    template <typename Operation>
    static Type Each(Operation operation) {
        Type result{};
        for (std::size_t element = 0; element < kElements; ++element) {
            result[element] = operation(element);
        }
        return result;
    }

    static Type Load(const std::uint32_t* words) {
        return Each([&](std::size_t i) { return words[i]; });
    }

    static void Store(std::uint32_t* words, const Type& vector) {
        std::copy(vector.begin(), vector.end(), words);
    }

    static void LoadMessage(const Sha256Lane* lanes, std::size_t offset, Type* message) {
        for (std::size_t word = 0; word < kSha256MessageWords; ++word) {
            message[word] = Each([&](std::size_t lane) {
                std::uint32_t value = 0;
                for (std::size_t byte = 0; byte < sizeof(value); ++byte) {
                    value = value << 8U | lanes[lane].blocks[offset + word * sizeof(value) + byte];
                }
                return value;
            });
        }
    }

    static Type Broadcast(std::uint32_t word) {
        return Each([&](std::size_t) { return word; });
    }

    static Type Add(const Type& x, const Type& y) {
        return Each([&](std::size_t i) { return x[i] + y[i]; });
    }

    static Type Subtract(const Type& x, const Type& y) {
        return Each([&](std::size_t i) { return x[i] - y[i]; });
    }

    template <unsigned kBits>
    static Type RotateRight(const Type& x) {
        return Each([&](std::size_t i) { return x[i] >> kBits | x[i] << (32U - kBits); });
    }

    template <unsigned kBits>
    static Type ShiftRight(const Type& x) {
        return Each([&](std::size_t i) { return x[i] >> kBits; });
    }

    static Type Keep(const Type& x) { return x; }

    static Type Xor3(const Type& x, const Type& y, const Type& z) {
        return Each([&](std::size_t i) { return x[i] ^ y[i] ^ z[i]; });
    }

    static Type Choose(const Type& x, const Type& y, const Type& z) {
        return Each([&](std::size_t i) { return (x[i] & y[i]) | (~x[i] & z[i]); });
    }

    static Type Majority(const Type& x, const Type& y, const Type& z) {
        return Each([&](std::size_t i) { return (x[i] & y[i]) | (x[i] & z[i]) | (y[i] & z[i]); });
    }
};

// Messages of different lengths, so that the later calls have fewer of them.
template <RoundSums kSums>
void ExpectRightDigests() {
    std::vector<std::vector<std::uint8_t>> bytes;
    for (std::size_t lane = 0; lane < kElements; ++lane) {
        bytes.push_back(test::NumberedMessage(1000 - 100 * lane, lane));
    }
    const std::vector<std::span<const std::uint8_t>> messages(bytes.begin(), bytes.end());
    const auto compress = [](std::span<const Sha256Lane> lanes, std::size_t blockCount) {
        CompressWide<PlainVector, kSums>(lanes.data(), lanes.size(), blockCount);
    };
    EXPECT_EQ(test::DigestsBy(compress, messages, 3), test::ReferenceDigests(messages));
}

TEST(Sha256WideRounds, FewestAdditionsGiveRightDigests) {
    ExpectRightDigests<RoundSums::FewestAdditions>();
}

TEST(Sha256WideRounds, ShortestChainGivesRightDigests) {
    ExpectRightDigests<RoundSums::ShortestChain>();
}

}  // namespace
}  // namespace sealkeeper
