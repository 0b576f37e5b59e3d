// SHA-256 (FIPS 180-4, 6.2) of as many messages as a vector has elements: each message is one
// element of every vector.
//
// Each kernel's file passes a vector type from its anonymous namespace. Instances of these
// templates for such a type have internal linkage, so the linker cannot use code that was compiled
// with one kernel's flags elsewhere. For the same reason the arrays are plain ones: inline
// functions of the standard library have external linkage.
//
// `Vector` has
//   Type                          the vector
//   kLanes                        how many elements of 32 bits it has
//   Load, Store                   from and to aligned words
//   LoadMessage(lanes, offset, message)
//                                 the 16 words of the block at `offset` of each lane
//   Broadcast                     a word in every element
//   Add, RotateRight, ShiftRight  of each element
//   Subtract                      of each element, for `RoundSums::ShortestChain` only
//   Xor3, Choose, Majority        of each bit
//   Keep                          the same vector; no sum is reordered across it
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_WIDE_ROUNDS_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_WIDE_ROUNDS_H

#include <cstddef>
#include <cstdint>

#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

inline constexpr std::size_t kSha256MessageWords = 16;

// How the rounds and the message schedule add up their operands. Which is faster depends on the
// processor.
enum class RoundSums {
    // For processors that are bound by the number of instructions.
    FewestAdditions,
    // One more addition a round, but one less between a result of the round before and the same
    // result of this one. For processors that wait for results, such as AMD's Zen 5, where the
    // result of a vector instruction is ready after two cycles.
    ShortestChain,
};

// Computes the next word of the message schedule, in the place of the word 16 before it.
template <typename Vector, RoundSums kSums>
[[gnu::always_inline]] inline void ScheduleNextWord(typename Vector::Type* message,
                                                    std::size_t round) {
    using Type = typename Vector::Type;
    const Type word15 = message[(round + 1) % kSha256MessageWords];
    const Type word7 = message[(round + 9) % kSha256MessageWords];
    const Type word2 = message[(round + 14) % kSha256MessageWords];
    const Type sigma0 = Vector::Xor3(Vector::template RotateRight<7>(word15),
                                     Vector::template RotateRight<18>(word15),
                                     Vector::template ShiftRight<3>(word15));
    const Type sigma1 = Vector::Xor3(Vector::template RotateRight<17>(word2),
                                     Vector::template RotateRight<19>(word2),
                                     Vector::template ShiftRight<10>(word2));
    Type& word = message[round % kSha256MessageWords];
    if constexpr (kSums == RoundSums::FewestAdditions) {
        word = Vector::Add(Vector::Add(word, word7), Vector::Add(sigma0, sigma1));
    } else {
        // The most recent word is added last. This gains AVX-512 3 % on Zen 5. AVX2, which has half
        // the registers, would lose 4 %.
        const Type older = Vector::Keep(Vector::Add(word, word7));
        word = Vector::Keep(Vector::Add(Vector::Keep(Vector::Add(older, sigma0)), sigma1));
    }
}

template <typename Vector>
[[gnu::always_inline]] inline typename Vector::Type BigSigma0(typename Vector::Type a) {
    return Vector::Xor3(Vector::template RotateRight<2>(a), Vector::template RotateRight<13>(a),
                        Vector::template RotateRight<22>(a));
}

template <typename Vector>
[[gnu::always_inline]] inline typename Vector::Type BigSigma1(typename Vector::Type e) {
    return Vector::Xor3(Vector::template RotateRight<6>(e), Vector::template RotateRight<11>(e),
                        Vector::template RotateRight<25>(e));
}

// One round. The eight state words rotate their names from round to round and keep their places.
//
// Whatever depends on `e` or `a`, the results of the round before, is added last. Without `Keep`,
// compilers reorder the sums, and the longer dependency chain costs AVX-512 an eighth of its speed
// or more.
template <typename Vector, RoundSums kSums>
[[gnu::always_inline]] inline void OneRound(typename Vector::Type* state, std::size_t round,
                                            std::uint32_t constant, typename Vector::Type word) {
    using Type = typename Vector::Type;
    constexpr std::size_t kWords = kSha256StateWords;
    const std::size_t first = kWords - round % kWords;
    const Type a = state[first % kWords];
    const Type b = state[(first + 1) % kWords];
    const Type c = state[(first + 2) % kWords];
    Type& d = state[(first + 3) % kWords];
    const Type e = state[(first + 4) % kWords];
    const Type f = state[(first + 5) % kWords];
    const Type g = state[(first + 6) % kWords];
    Type& h = state[(first + 7) % kWords];

    const Type sum1 = BigSigma1<Vector>(e);
    const Type ready = Vector::Keep(Vector::Add(h, Vector::Add(word, Vector::Broadcast(constant))));
    if constexpr (kSums == RoundSums::FewestAdditions) {
        const Type temporary1 =
            Vector::Add(Vector::Keep(Vector::Add(ready, Vector::Choose(e, f, g))), sum1);
        const Type temporary2 = Vector::Add(BigSigma0<Vector>(a), Vector::Majority(a, b, c));
        d = Vector::Add(d, temporary1);
        h = Vector::Add(temporary1, temporary2);
    } else {
        // The first temporary value is not computed: it is the new `d` less the old one.
        const Type difference = Vector::Keep(Vector::Subtract(Vector::Majority(a, b, c), d));
        const Type readyForD = Vector::Keep(Vector::Add(d, ready));
        d = Vector::Keep(
            Vector::Add(Vector::Keep(Vector::Add(readyForD, Vector::Choose(e, f, g))), sum1));
        h = Vector::Keep(
            Vector::Add(Vector::Keep(Vector::Add(d, difference)), BigSigma0<Vector>(a)));
    }
}

// After 16 rounds all names are back in place, so the loop body is 16 rounds. All 64 unrolled
// exceed the cache of decoded instructions: AVX2 then took up to twice as long.
template <typename Vector, RoundSums kSums>
[[gnu::always_inline]] inline void CompressBlock(typename Vector::Type* state,
                                                 typename Vector::Type* message) {
    typename Vector::Type before[kSha256StateWords];
    for (std::size_t word = 0; word < kSha256StateWords; ++word) {
        before[word] = state[word];
    }
#pragma GCC unroll 16
    for (std::size_t round = 0; round < kSha256MessageWords; ++round) {
        OneRound<Vector, kSums>(state, round, kSha256RoundConstants[round], message[round]);
    }
#pragma GCC unroll 1
    for (std::size_t first = kSha256MessageWords; first < kSha256Rounds;
         first += kSha256MessageWords) {
#pragma GCC unroll 16
        for (std::size_t round = 0; round < kSha256MessageWords; ++round) {
            ScheduleNextWord<Vector, kSums>(message, round);
            OneRound<Vector, kSums>(state, round, kSha256RoundConstants[first + round],
                                    message[round]);
        }
    }
    for (std::size_t word = 0; word < kSha256StateWords; ++word) {
        state[word] = Vector::Add(state[word], before[word]);
    }
}

// The `compress` of a kernel. With fewer lanes than elements, the idle elements hash the blocks of
// the first lane, and their results are dropped.
template <typename Vector, RoundSums kSums = RoundSums::FewestAdditions>
void CompressWide(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
    static_assert(Vector::kLanes <= kMaxSha256Lanes);
    if (laneCount == 0 || blockCount == 0) {
        return;
    }
    Sha256Lane all[Vector::kLanes];
    alignas(typename Vector::Type) std::uint32_t words[kSha256StateWords][Vector::kLanes];
    for (std::size_t lane = 0; lane < Vector::kLanes; ++lane) {
        all[lane] = lanes[lane < laneCount ? lane : 0];
        for (std::size_t word = 0; word < kSha256StateWords; ++word) {
            words[word][lane] = all[lane].state[word];
        }
    }
    typename Vector::Type state[kSha256StateWords];
    for (std::size_t word = 0; word < kSha256StateWords; ++word) {
        state[word] = Vector::Load(words[word]);
    }
    for (std::size_t block = 0; block < blockCount; ++block) {
        typename Vector::Type message[kSha256MessageWords];
        Vector::LoadMessage(all, block * kSha256BlockBytes, message);
        CompressBlock<Vector, kSums>(state, message);
    }
    for (std::size_t word = 0; word < kSha256StateWords; ++word) {
        Vector::Store(words[word], state[word]);
    }
    for (std::size_t lane = 0; lane < laneCount; ++lane) {
        for (std::size_t word = 0; word < kSha256StateWords; ++word) {
            lanes[lane].state[word] = words[word][lane];
        }
    }
}

}  // namespace sealkeeper

#endif
