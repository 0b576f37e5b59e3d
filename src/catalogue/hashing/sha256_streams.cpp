#include "catalogue/hashing/sha256_streams.h"

#include <algorithm>
#include <array>

#include "catalogue/hashing/sha256_constants.h"

namespace sealkeeper {
namespace {

// The length of the message in bits ends the last block (FIPS 180-4, 5.1.1).
constexpr std::size_t kLengthBytes = 8;
constexpr std::uint8_t kPaddingMark = 0x80;

void StoreBigEndian(std::uint64_t number, std::span<std::uint8_t> bytes) {
    for (std::size_t i = bytes.size(); i-- > 0; number >>= 8U) {
        bytes[i] = static_cast<std::uint8_t>(number);
    }
}

class KernelSha256Streams : public Sha256Streams {
  public:
    explicit KernelSha256Streams(const Sha256Kernel& kernel) : kernel_(kernel) {}

    [[nodiscard]] const char* Name() const override { return kernel_.name; }

    void Start(std::size_t stream) override { streams_[stream] = Stream{}; }

    void Take(std::span<const Sha256Step> steps, std::size_t blockCount) override {
        std::array<Sha256Lane, kMaxSha256Streams> lanes{};
        for (std::size_t i = 0; i < steps.size(); ++i) {
            Stream& stream = streams_[steps[i].stream];
            lanes[i] = {stream.state.data(), steps[i].blocks};
            stream.takenBytes += std::uint64_t{blockCount} * kSha256BlockBytes;
        }
        kernel_.compress(lanes.data(), steps.size(), blockCount);
    }

    int Finish(std::size_t stream, std::span<const std::uint8_t> lastBytes,
               Sha256Digest& digest) override {
        const std::uint64_t messageBytes = streams_[stream].takenBytes + lastBytes.size();
        std::array<std::uint8_t, 2 * kSha256BlockBytes> padded{};
        std::copy(lastBytes.begin(), lastBytes.end(), padded.begin());
        padded[lastBytes.size()] = kPaddingMark;
        const std::size_t blockCount =
            lastBytes.size() + 1 + kLengthBytes > kSha256BlockBytes ? 2 : 1;
        StoreBigEndian(
            messageBytes * 8,
            std::span(padded).subspan(blockCount * kSha256BlockBytes - kLengthBytes, kLengthBytes));
        const Sha256Step step{stream, padded.data()};
        Take({&step, 1}, blockCount);
        for (std::size_t i = 0; i < kSha256StateWords; ++i) {
            StoreBigEndian(
                streams_[stream].state[i],
                std::span(digest).subspan(i * sizeof(std::uint32_t), sizeof(std::uint32_t)));
        }
        return 0;
    }

  private:
    struct Stream {
        std::array<std::uint32_t, kSha256StateWords> state = std::to_array(kSha256InitialState);
        std::uint64_t takenBytes = 0;
    };

    const Sha256Kernel& kernel_;
    std::array<Stream, kMaxSha256Streams> streams_{};
};

// The known answer is of as many messages as there are streams, all different, so that a stream
// does not pass with the blocks or the state of another. They are taken in by calls of 1, 2 and 3
// blocks, which show whether a kernel goes on from block to block and from call to call.
constexpr std::size_t kMostKnownBlocks = 3;
constexpr std::size_t kKnownBlocks = 1 + 2 + 3;
constexpr std::size_t kKnownLastBytes = 8;
using KnownMessage = std::array<std::uint8_t, kKnownBlocks * kSha256BlockBytes + kKnownLastBytes>;

// No block of any message is like another.
KnownMessage MakeKnownMessage(std::size_t number) {
    KnownMessage message{};
    for (std::size_t i = 0; i < message.size(); ++i) {
        message[i] = static_cast<std::uint8_t>((i + 50 * number) % 251);
    }
    return message;
}

// Of Python's hashlib and of openssl, which agree:
// hashlib.sha256(bytes((i + 50 * number) % 251 for i in range(6 * 64 + 8)))
constexpr std::array<Sha256Digest, kMaxSha256Streams> kKnownDigests = {{
    {0x07, 0x95, 0x2f, 0xda, 0x8a, 0xa8, 0xf3, 0xcc, 0xb6, 0x55, 0x20,
     0xea, 0x81, 0x96, 0x87, 0x06, 0xe9, 0x5f, 0x5f, 0x94, 0x67, 0x57,
     0xae, 0xb2, 0xbb, 0x84, 0x68, 0x4c, 0xcb, 0x70, 0x0f, 0x57},
    {0x88, 0x68, 0xda, 0xd6, 0x1e, 0x42, 0xb3, 0xf8, 0xc0, 0x35, 0x24,
     0x5e, 0x27, 0x27, 0x24, 0xbc, 0x17, 0x1a, 0x66, 0xf9, 0xca, 0x54,
     0xc0, 0xf6, 0x26, 0x7e, 0xd7, 0xf6, 0x15, 0x1e, 0xe1, 0xe4},
    {0x10, 0x01, 0x28, 0x43, 0x08, 0xef, 0x51, 0x43, 0x05, 0x6f, 0x5c,
     0x1d, 0x54, 0x01, 0xfc, 0x4e, 0x43, 0xae, 0x48, 0x69, 0x37, 0x2b,
     0x72, 0xb8, 0x91, 0x4b, 0xe8, 0x2b, 0x82, 0xb9, 0x38, 0x56},
    {0xdb, 0x3f, 0x37, 0x2c, 0x71, 0x3e, 0x0b, 0x17, 0x49, 0x75, 0xa4,
     0xc1, 0x9d, 0x2a, 0x8a, 0xba, 0x1b, 0xe6, 0x14, 0x82, 0x9c, 0x3e,
     0xeb, 0x8f, 0xd2, 0x9e, 0x9e, 0x31, 0x20, 0xa8, 0xc7, 0xec},
}};

bool GivesKnownDigests(const Sha256Kernel& kernel, std::size_t streamCount) {
    KernelSha256Streams streams(kernel);
    std::array<KnownMessage, kMaxSha256Streams> messages{};
    std::array<Sha256Step, kMaxSha256Streams> allSteps{};
    const auto steps = std::span(allSteps).first(streamCount);
    for (std::size_t stream = 0; stream < streamCount; ++stream) {
        messages[stream] = MakeKnownMessage(stream);
        steps[stream] = {stream, messages[stream].data()};
        streams.Start(stream);
    }
    for (std::size_t blockCount = 1; blockCount <= kMostKnownBlocks; ++blockCount) {
        streams.Take(steps, blockCount);
        for (Sha256Step& step : steps) {
            step.blocks += blockCount * kSha256BlockBytes;
        }
    }
    return std::all_of(steps.begin(), steps.end(), [&](const Sha256Step& step) {
        Sha256Digest digest{};
        return streams.Finish(step.stream, {step.blocks, kKnownLastBytes}, digest) == 0 &&
               digest == kKnownDigests[step.stream];
    });
}

// Null when this processor has none that works.
const Sha256Kernel* FindUsableKernel() {
    const Sha256Kernel* kernel = CompiledSha256Kernel();
    return kernel != nullptr && IsUsable(*kernel) ? kernel : nullptr;
}

}  // namespace

const Sha256Kernel* CompiledSha256Kernel() {
    // The build names the kernel that it compiles.
#if defined(SEALKEEPER_SHA256_KERNEL)
    return &SEALKEEPER_SHA256_KERNEL;
#else
    return nullptr;
#endif
}

bool IsUsable(const Sha256Kernel& kernel) {
    if (!kernel.isSupported()) {
        return false;
    }
    for (std::size_t streamCount = 1; streamCount <= kMaxSha256Streams; ++streamCount) {
        if (!GivesKnownDigests(kernel, streamCount)) {
            return false;
        }
    }
    return true;
}

std::unique_ptr<Sha256Streams> MakeKernelSha256Streams(const Sha256Kernel& kernel) {
    return std::make_unique<KernelSha256Streams>(kernel);
}

std::unique_ptr<Sha256Streams> MakeSha256Streams() {
    static const Sha256Kernel* const kernel = FindUsableKernel();
    return kernel != nullptr ? MakeKernelSha256Streams(*kernel) : MakeMbedTlsSha256Streams();
}

}  // namespace sealkeeper
