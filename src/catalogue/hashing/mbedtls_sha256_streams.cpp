// SHA-256 streams of mbed TLS, one after the other.
#include <array>

#include "catalogue/hashing/sha256_streams.h"
#include "runtime/mbedtls_contexts.h"

namespace sealkeeper {
namespace {

class MbedTlsSha256Streams : public Sha256Streams {
  public:
    [[nodiscard]] const char* Name() const override { return "mbed TLS"; }

    void Start(std::size_t stream) override {
        contexts_[stream].Reset();
        errors_[stream] = StartSha256(contexts_[stream].Get());
    }

    void Take(std::span<const Sha256Step> steps, std::size_t blockCount) override {
        for (const Sha256Step& step : steps) {
            Update(step.stream, {step.blocks, blockCount * kSha256BlockBytes});
        }
    }

    int Finish(std::size_t stream, std::span<const std::uint8_t> lastBytes,
               Sha256Digest& digest) override {
        Update(stream, lastBytes);
        return errors_[stream] != 0 ? errors_[stream]
                                    : FinishSha256(contexts_[stream].Get(), digest);
    }

  private:
    void Update(std::size_t stream, std::span<const std::uint8_t> bytes) {
        if (errors_[stream] == 0) {
            errors_[stream] = UpdateSha256(contexts_[stream].Get(), bytes);
        }
    }

    std::array<Sha256Context, kMaxSha256Streams> contexts_;
    // The first error of each stream.
    std::array<int, kMaxSha256Streams> errors_{};
};

}  // namespace

std::unique_ptr<Sha256Streams> MakeMbedTlsSha256Streams() {
    return std::make_unique<MbedTlsSha256Streams>();
}

}  // namespace sealkeeper
