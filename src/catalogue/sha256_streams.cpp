#include "catalogue/sha256_streams.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace sealkeeper {
namespace {

// FIPS 180-4, 5.3.3.
constexpr std::array<std::uint32_t, kSha256StateWords> kInitialState = {
    0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

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

    void Start(std::size_t stream) override { streams_[stream] = Stream{}; }

    void Take(std::span<const Sha256Step> steps, std::size_t blockCount) override {
        std::array<Sha256Lane, kMaxSha256Streams> lanes{};
        for (std::size_t i = 0; i < steps.size(); ++i) {
            Stream& stream = streams_[steps[i].stream];
            lanes[i] = {stream.state.data(), steps[i].blocks};
            stream.takenBytes += blockCount * kSha256BlockBytes;
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
        std::array<std::uint32_t, kSha256StateWords> state = kInitialState;
        std::uint64_t takenBytes = 0;
    };

    const Sha256Kernel& kernel_;
    std::array<Stream, kMaxSha256Streams> streams_{};
};

// The kernel compiled for this architecture; null when there is none.
const Sha256Kernel* CompiledKernel() {
#if defined(__x86_64__)
    return &kX86Sha256Kernel;
#elif defined(__aarch64__)
    return &kArmSha256Kernel;
#else
    return nullptr;
#endif
}

// Whether the kernel, on `streamCount` streams at once, gives the digest that the Secure Hash
// Standard's examples have for their message of 896 bits.
bool ReproducesKnownAnswer(const Sha256Kernel& kernel, std::size_t streamCount) {
    constexpr std::string_view kMessage =
        "abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmno"
        "ijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu";
    constexpr Sha256Digest kDigest = {0xcf, 0x5b, 0x16, 0xa7, 0x78, 0xaf, 0x83, 0x80,
                                      0x03, 0x6c, 0xe5, 0x9e, 0x7b, 0x04, 0x92, 0x37,
                                      0x0b, 0x24, 0x9b, 0x11, 0xe8, 0xf0, 0x7a, 0x51,
                                      0xaf, 0xac, 0x45, 0x03, 0x7a, 0xfe, 0xe9, 0xd1};
    const std::vector<std::uint8_t> message(kMessage.begin(), kMessage.end());
    KernelSha256Streams streams(kernel);
    std::array<Sha256Step, kMaxSha256Streams> steps{};
    for (std::size_t stream = 0; stream < streamCount; ++stream) {
        streams.Start(stream);
        steps[stream] = {stream, message.data()};
    }
    const auto taken = std::span(steps).first(streamCount);
    streams.Take(taken, 1);
    const auto lastBytes = std::span(message).subspan(kSha256BlockBytes);
    return std::all_of(taken.begin(), taken.end(), [&](const Sha256Step& step) {
        Sha256Digest digest{};
        return streams.Finish(step.stream, lastBytes, digest) == 0 && digest == kDigest;
    });
}

// Null when this processor has none that works.
const Sha256Kernel* FindUsableKernel() {
    const Sha256Kernel* kernel = CompiledKernel();
    return kernel != nullptr && IsUsable(*kernel) ? kernel : nullptr;
}

}  // namespace

bool IsUsable(const Sha256Kernel& kernel) {
    if (!kernel.isSupported()) {
        return false;
    }
    for (std::size_t streamCount = 1; streamCount <= kMaxSha256Streams; ++streamCount) {
        if (!ReproducesKnownAnswer(kernel, streamCount)) {
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
