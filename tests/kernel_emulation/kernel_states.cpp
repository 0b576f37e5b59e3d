// Prints the name of the SHA-256 kernel that SEALKEEPER_SHA256_KERNEL names and its most lanes,
// runs it on the jobs of its standard input, and prints the hash values. Links nothing but the
// kernel and what it needs, so that it runs under emulation.
//
// A job is the number of messages (1 byte), the offset of the blocks from the start of an
// allocation (1 byte), the most blocks of one call (2 bytes, little-endian), the blocks of each
// message (2 bytes each), and the padded messages. Its output is a line for each message.
#include <array>
#include <cstdio>
#include <vector>

#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {
namespace {

// Tells the driver that the processor lacks the instructions.
constexpr int kUnsupported = 77;
constexpr std::uint32_t kGuard = 0xA5C3F00D;

const Sha256Kernel& kernel = SEALKEEPER_SHA256_KERNEL;

struct Message {
    std::uint32_t guardBefore = kGuard;
    std::array<std::uint32_t, kSha256StateWords> state = std::to_array(kSha256InitialState);
    std::uint32_t guardAfter = kGuard;
    std::vector<std::uint8_t> storage;
    const std::uint8_t* blocks = nullptr;
    std::size_t blocksLeft = 0;
};

bool Read(void* to, std::size_t byteCount) {
    return std::fread(to, 1, byteCount, stdin) == byteCount;
}

bool ReadNumber(std::size_t& number) {
    std::array<std::uint8_t, 2> bytes{};
    if (!Read(bytes.data(), bytes.size())) {
        return false;
    }
    number = bytes[0] + bytes[1] * std::size_t{256};
    return true;
}

bool ReadMessage(Message& message, std::size_t offset) {
    const std::size_t byteCount = message.blocksLeft * kSha256BlockBytes;
    message.storage.resize(offset + byteCount);
    message.blocks = message.storage.data() + offset;
    return Read(message.storage.data() + offset, byteCount);
}

// Calls the kernel with all messages that have blocks left until none has.
void Compress(std::vector<Message>& messages, std::size_t mostBlocks) {
    for (;;) {
        std::array<Sha256Lane, kMaxSha256Lanes> lanes{};
        std::size_t laneCount = 0;
        std::size_t blockCount = mostBlocks;
        for (Message& message : messages) {
            if (message.blocksLeft > 0) {
                lanes.at(laneCount++) = {message.state.data(), message.blocks};
                blockCount = message.blocksLeft < blockCount ? message.blocksLeft : blockCount;
            }
        }
        if (laneCount == 0) {
            return;
        }
        kernel.compress(lanes.data(), laneCount, blockCount);
        for (Message& message : messages) {
            if (message.blocksLeft > 0) {
                message.blocks += blockCount * kSha256BlockBytes;
                message.blocksLeft -= blockCount;
            }
        }
    }
}

void Print(const Message& message) {
    if (message.guardBefore != kGuard || message.guardAfter != kGuard) {
        std::puts("wrote outside of the state");
        return;
    }
    for (const std::uint32_t word : message.state) {
        std::printf("%08x", static_cast<unsigned>(word));
    }
    std::puts("");
}

bool RunJob(std::size_t messageCount) {
    std::uint8_t offset = 0;
    std::size_t mostBlocks = 0;
    if (messageCount == 0 || messageCount > kernel.maxLanes || !Read(&offset, sizeof offset) ||
        !ReadNumber(mostBlocks) || mostBlocks == 0) {
        return false;
    }
    std::vector<Message> messages(messageCount);
    for (Message& message : messages) {
        if (!ReadNumber(message.blocksLeft)) {
            return false;
        }
    }
    for (Message& message : messages) {
        if (!ReadMessage(message, offset)) {
            return false;
        }
    }
    Compress(messages, mostBlocks);
    for (const Message& message : messages) {
        Print(message);
    }
    return true;
}

int RunJobs() {
    std::printf("%s\n%zu\n", kernel.name, kernel.maxLanes);
    if (!kernel.isSupported()) {
        return kUnsupported;
    }
    for (int messageCount = std::getchar(); messageCount != EOF; messageCount = std::getchar()) {
        if (!RunJob(static_cast<std::size_t>(messageCount))) {
            std::fputs("a job is not as it should be\n", stderr);
            return 1;
        }
    }
    return 0;
}

}  // namespace
}  // namespace sealkeeper

int main() {
    return sealkeeper::RunJobs();
}
