// SHA-256 of one message in plain C++, for processors without suitable instructions.
#include "catalogue/hashing/sha256_kernel.h"

#include "catalogue/hashing/sha256_wide_rounds.h"

namespace sealkeeper {
namespace {

// A vector of one element.
struct Word {
    using Type = std::uint32_t;
    static constexpr std::size_t kLanes = 1;

    static Type Load(const std::uint32_t* words) { return *words; }

    static void Store(std::uint32_t* words, Type word) { *words = word; }

    static void LoadMessage(const Sha256Lane* lanes, std::size_t offset, Type* message) {
        const std::uint8_t* bytes = lanes[0].blocks + offset;
        for (std::size_t word = 0; word < kSha256MessageWords; ++word, bytes += sizeof(Type)) {
            message[word] = Type{bytes[0]} << 24U | Type{bytes[1]} << 16U | Type{bytes[2]} << 8U |
                            Type{bytes[3]};
        }
    }

    static Type Broadcast(std::uint32_t word) { return word; }

    static Type Add(Type x, Type y) { return x + y; }

    template <unsigned kBits>
    static Type RotateRight(Type x) {
        return x >> kBits | x << (32U - kBits);
    }

    template <unsigned kBits>
    static Type ShiftRight(Type x) {
        return x >> kBits;
    }

    // A single element does not gain from a fixed order of additions.
    static Type Keep(Type x) { return x; }

    static Type Xor3(Type x, Type y, Type z) { return x ^ y ^ z; }

    static Type Choose(Type x, Type y, Type z) { return ((y ^ z) & x) ^ z; }

    static Type Majority(Type x, Type y, Type z) { return (x & y) | ((x | y) & z); }
};

bool IsSupported() {
    return true;
}

}  // namespace

constinit const Sha256Kernel kPortableSha256Kernel = {"portable", Word::kLanes, IsSupported,
                                                      CompressWide<Word>};

}  // namespace sealkeeper
