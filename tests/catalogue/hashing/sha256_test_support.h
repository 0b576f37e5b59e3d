// Shared by the tests of SHA-256 kernels and of the engine: messages, and their digests by any
// block function.
#ifndef SEALKEEPER_TESTS_CATALOGUE_HASHING_SHA256_TEST_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_HASHING_SHA256_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_kernel.h"
#include "catalogue/hashing/sha256_padding.h"

namespace sealkeeper::test {

using Compressor = std::function<void(std::span<const Sha256Lane> lanes, std::size_t blockCount)>;

// A different message for each number. No two of its blocks are equal.
[[nodiscard]] inline std::vector<std::uint8_t> NumberedMessage(std::size_t sizeBytes,
                                                               std::size_t number) {
    std::vector<std::uint8_t> bytes(sizeBytes);
    auto state = static_cast<std::uint32_t>(number);
    for (std::uint8_t& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24U);
    }
    return bytes;
}

// A message in progress: first its whole blocks in place, then its last bytes with padding.
class MessageInBlocks {
  public:
    explicit MessageInBlocks(std::span<const std::uint8_t> message)
        : blocks_(message.data()), blocksLeft_(message.size() / kSha256BlockBytes) {
        const auto last = message.subspan(blocksLeft_ * kSha256BlockBytes);
        std::copy(last.begin(), last.end(), tail_.begin());
        tailBlocks_ = AppendSha256Padding(tail_, last.size(), message.size());
    }

    // The number of contiguous blocks.
    [[nodiscard]] std::size_t BlocksLeft() {
        if (blocksLeft_ == 0 && tailBlocks_ > 0) {
            blocks_ = tail_.data();
            blocksLeft_ = tailBlocks_;
            tailBlocks_ = 0;
        }
        return blocksLeft_;
    }

    [[nodiscard]] Sha256Lane Lane() { return {state_.data(), blocks_}; }

    void Advance(std::size_t blockCount) {
        blocks_ += blockCount * kSha256BlockBytes;
        blocksLeft_ -= blockCount;
    }

    [[nodiscard]] std::string Digest() const { return Hex(sealkeeper::DigestOf(state_)); }

  private:
    std::array<std::uint32_t, kSha256StateWords> state_ = std::to_array(kSha256InitialState);
    std::array<std::uint8_t, kSha256BlockBytes - 1 + kMaxSha256PaddingBytes> tail_{};
    std::size_t tailBlocks_ = 0;
    const std::uint8_t* blocks_;
    std::size_t blocksLeft_;
};

// The digest of each message. Each call hashes all messages that have a block left, one per lane,
// and at most `mostBlocks` of each.
[[nodiscard]] inline std::vector<std::string> DigestsBy(
    const Compressor& compress, const std::vector<std::span<const std::uint8_t>>& messages,
    std::size_t mostBlocks) {
    std::vector<MessageInBlocks> underWay(messages.begin(), messages.end());
    for (;;) {
        std::vector<MessageInBlocks*> taken;
        std::vector<Sha256Lane> lanes;
        std::size_t blockCount = mostBlocks;
        for (MessageInBlocks& message : underWay) {
            if (const std::size_t blocksLeft = message.BlocksLeft(); blocksLeft > 0) {
                blockCount = std::min(blockCount, blocksLeft);
                lanes.push_back(message.Lane());
                taken.push_back(&message);
            }
        }
        if (lanes.empty()) {
            break;
        }
        compress(lanes, blockCount);
        for (MessageInBlocks* message : taken) {
            message->Advance(blockCount);
        }
    }
    std::vector<std::string> digests;
    for (const MessageInBlocks& message : underWay) {
        digests.push_back(message.Digest());
    }
    return digests;
}

// Computed by mbed TLS.
[[nodiscard]] inline std::vector<std::string> ReferenceDigests(
    const std::vector<std::span<const std::uint8_t>>& messages) {
    std::vector<std::string> digests;
    for (const std::span<const std::uint8_t> message : messages) {
        digests.push_back(Sha256Hex(message));
    }
    return digests;
}

// As a part of a test name.
[[nodiscard]] inline std::string TestNameOf(const Sha256Kernel& kernel) {
    std::string name;
    for (const char* c = kernel.name; *c != '\0'; ++c) {
        if (std::isalnum(static_cast<unsigned char>(*c)) != 0) {
            name += *c;
        }
    }
    return name;
}

[[nodiscard]] inline std::string KernelTestName(
    const testing::TestParamInfo<const Sha256Kernel*>& info) {
    return TestNameOf(*info.param);
}

}  // namespace sealkeeper::test

#endif
