#include "catalogue/hashing/sha256_streams.h"

#include <algorithm>
#include <array>

#include "catalogue/hashing/sha256_constants.h"
#include "catalogue/hashing/sha256_kernels.h"

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

// Null when this processor has none that works.
const Sha256Kernel* FindUsableKernel() {
    for (const Sha256Kernel* kernel : CompiledSha256Kernels()) {
        if (kernel->maxLanes == kMaxSha256Streams && IsUsable(*kernel)) {
            return kernel;
        }
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<Sha256Streams> MakeKernelSha256Streams(const Sha256Kernel& kernel) {
    return std::make_unique<KernelSha256Streams>(kernel);
}

std::unique_ptr<Sha256Streams> MakeSha256Streams() {
    static const Sha256Kernel* const kernel = FindUsableKernel();
    return kernel != nullptr ? MakeKernelSha256Streams(*kernel) : MakeMbedTlsSha256Streams();
}

}  // namespace sealkeeper
