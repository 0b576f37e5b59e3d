// Runs the SHA-256 kernel that SEALKEEPER_SHA256_KERNEL names on the jobs of its standard input,
// and prints the hash values. Links nothing but the kernel and its constants, so that it runs under
// emulation.
//
// A job is the number of streams (1 byte), the offset of the blocks from the start of an
// allocation (1 byte), the most blocks of one call (2 bytes, little-endian), the blocks of each
// stream (2 bytes each), and the streams' padded messages. Its output is a line for each stream.
#include <array>
#include <cstdio>
#include <vector>

#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_kernel.h"

namespace sealkeeper {
namespace {

// What the driver takes as the processor's lack of the instructions.
constexpr int kUnsupported = 77;
constexpr std::uint32_t kGuard = 0xA5C3F00D;

const Sha256Kernel& kernel = SEALKEEPER_SHA256_KERNEL;

struct Stream {
    std::uint32_t guardBefore = kGuard;
    std::array<std::uint32_t, kSha256StateWords> state = std::to_array(kSha256InitialState);
    std::uint32_t guardBehind = kGuard;
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

bool ReadMessage(Stream& stream, std::size_t offset) {
    const std::size_t byteCount = stream.blocksLeft * kSha256BlockBytes;
    stream.storage.resize(offset + byteCount);
    stream.blocks = stream.storage.data() + offset;
    return Read(stream.storage.data() + offset, byteCount);
}

// Calls the kernel with all streams that have blocks left, until none has.
void Compress(std::vector<Stream>& streams, std::size_t mostBlocks) {
    for (;;) {
        std::array<Sha256Lane, kMaxSha256Streams> lanes{};
        std::size_t laneCount = 0;
        std::size_t blockCount = mostBlocks;
        for (Stream& stream : streams) {
            if (stream.blocksLeft > 0) {
                lanes.at(laneCount++) = {stream.state.data(), stream.blocks};
                blockCount = stream.blocksLeft < blockCount ? stream.blocksLeft : blockCount;
            }
        }
        if (laneCount == 0) {
            return;
        }
        kernel.compress(lanes.data(), laneCount, blockCount);
        for (Stream& stream : streams) {
            if (stream.blocksLeft > 0) {
                stream.blocks += blockCount * kSha256BlockBytes;
                stream.blocksLeft -= blockCount;
            }
        }
    }
}

void Print(const Stream& stream) {
    if (stream.guardBefore != kGuard || stream.guardBehind != kGuard) {
        std::puts("wrote outside of the state");
        return;
    }
    for (const std::uint32_t word : stream.state) {
        std::printf("%08x", static_cast<unsigned>(word));
    }
    std::puts("");
}

bool RunJob(std::size_t streamCount) {
    std::uint8_t offset = 0;
    std::size_t mostBlocks = 0;
    if (streamCount == 0 || streamCount > kMaxSha256Streams || !Read(&offset, sizeof offset) ||
        !ReadNumber(mostBlocks) || mostBlocks == 0) {
        return false;
    }
    std::vector<Stream> streams(streamCount);
    for (Stream& stream : streams) {
        if (!ReadNumber(stream.blocksLeft)) {
            return false;
        }
    }
    for (Stream& stream : streams) {
        if (!ReadMessage(stream, offset)) {
            return false;
        }
    }
    Compress(streams, mostBlocks);
    for (const Stream& stream : streams) {
        Print(stream);
    }
    return true;
}

int RunJobs() {
    std::puts(kernel.name);
    if (!kernel.isSupported()) {
        return kUnsupported;
    }
    for (int streamCount = std::getchar(); streamCount != EOF; streamCount = std::getchar()) {
        if (!RunJob(static_cast<std::size_t>(streamCount))) {
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
