// SHA-256 (FIPS 180-4, 6.2) of up to four messages with instructions that compute rounds of one
// message. The messages are interleaved, so that the processor can work on the others while one
// waits for a result.
//
// Each kernel's file passes a type of its anonymous namespace, and the arrays are plain ones, for
// the reasons that sha256_wide_rounds.h gives.
//
// `Instructions` has
//   Vector                 four words of the message schedule
//   State                  the eight state words
//   LoadState, StoreState  from and to words in the order a to h
//   AddStates              the sums of the words
//   LoadMessage(bytes)     four words of a block, which are big-endian
//   NextMessage(oldest, second, third, newest)
//                          the next vector of the message schedule (FIPS 180-4, 6.2.2), from the
//                          four before it
//   FourRounds(state, message, constants)
//                          four rounds; `constants` points to their four round constants
#ifndef SEALKEEPER_CATALOGUE_HASHING_SHA256_INTERLEAVED_ROUNDS_H
#define SEALKEEPER_CATALOGUE_HASHING_SHA256_INTERLEAVED_ROUNDS_H

#include <cstddef>
#include <cstdint>

#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {

// `CompressUpToFour` has a case for each number of lanes.
inline constexpr std::size_t kMaxInterleavedLanes = 4;
static_assert(kMaxInterleavedLanes <= kMaxSha256Lanes);

// A vector of the message schedule serves a group of four rounds. The latest four are kept.
inline constexpr std::size_t kRoundsOfGroup = 4;
inline constexpr std::size_t kRoundGroups = kSha256Rounds / kRoundsOfGroup;
inline constexpr std::size_t kMessageVectors = 4;
inline constexpr std::size_t kMessageVectorBytes = kSha256BlockBytes / kMessageVectors;

template <typename Instructions>
[[gnu::always_inline]] inline typename Instructions::Vector MessageOfGroup(
    const typename Instructions::Vector* latest, const std::uint8_t* block, std::size_t group) {
    if (group < kMessageVectors) {
        return Instructions::LoadMessage(block + group * kMessageVectorBytes);
    }
    return Instructions::NextMessage(
        latest[group % kMessageVectors], latest[(group + 1) % kMessageVectors],
        latest[(group + 2) % kMessageVectors], latest[(group + 3) % kMessageVectors]);
}

template <typename Instructions, std::size_t kLanes>
void CompressInterleaved(const Sha256Lane* lanes, std::size_t blockCount) {
    typename Instructions::State states[kLanes];
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        states[lane] = Instructions::LoadState(lanes[lane].state);
    }
    for (std::size_t block = 0; block < blockCount; ++block) {
        typename Instructions::State before[kLanes];
        typename Instructions::Vector messages[kLanes][kMessageVectors];
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            before[lane] = states[lane];
        }
#pragma GCC unroll 16
        for (std::size_t group = 0; group < kRoundGroups; ++group) {
#pragma GCC unroll 4
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                const auto message = MessageOfGroup<Instructions>(
                    messages[lane], lanes[lane].blocks + block * kSha256BlockBytes, group);
                messages[lane][group % kMessageVectors] = message;
                Instructions::FourRounds(states[lane], message,
                                         kSha256RoundConstants + kRoundsOfGroup * group);
            }
        }
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            states[lane] = Instructions::AddStates(states[lane], before[lane]);
        }
    }
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        Instructions::StoreState(states[lane], lanes[lane].state);
    }
}

// The `compress` of a kernel with up to `kMaxInterleavedLanes` lanes.
template <typename Instructions>
void CompressUpToFour(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
    switch (laneCount) {
        case 1:
            return CompressInterleaved<Instructions, 1>(lanes, blockCount);
        case 2:
            return CompressInterleaved<Instructions, 2>(lanes, blockCount);
        case 3:
            return CompressInterleaved<Instructions, 3>(lanes, blockCount);
        case 4:
            return CompressInterleaved<Instructions, 4>(lanes, blockCount);
        default:
            return;
    }
}

}  // namespace sealkeeper

#endif
