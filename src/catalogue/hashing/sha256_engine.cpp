#include "catalogue/hashing/sha256_engine.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "catalogue/hashing/sha256_kernel_timing.h"
#include "catalogue/hashing/sha256_kernels.h"

namespace sealkeeper {

Sha256Engine::Sha256Engine(std::vector<const Sha256Kernel*> kernels)
    : kernels_(std::move(kernels)) {
    std::erase_if(kernels_, [](const Sha256Kernel* kernel) { return !kernel->isSupported(); });
    if (kernels_.empty()) {
        kernels_.push_back(&kPortableSha256Kernel);
    }
    for (const Sha256Kernel* kernel : kernels_) {
        laneCount_ = std::max(laneCount_, kernel->maxLanes);
    }
}

void Sha256Engine::Compress(std::span<const Sha256Lane> lanes, std::size_t blockCount) const {
    if (lanes.empty() || blockCount == 0) {
        return;
    }
    if (lanes.size() == 1) {
        FirstUsable().compress(lanes.data(), 1, blockCount);
        return;
    }
    Prepare();
    while (!lanes.empty()) {
        const Sha256PlannedCall& call = plan_.at(lanes.size());
        call.kernel->compress(lanes.data(), call.laneCount, blockCount);
        lanes = lanes.subspan(call.laneCount);
    }
}

void Sha256Engine::Prepare() const {
    std::call_once(planIsMade_, [this] { plan_ = MakePlan(); });
}

const Sha256Kernel& Sha256Engine::FirstUsable() const {
    std::call_once(firstIsFound_, [this] {
        const auto found =
            std::find_if(kernels_.begin(), kernels_.end(),
                         [](const Sha256Kernel* kernel) { return IsUsable(*kernel); });
        first_ = found != kernels_.end() ? *found : &kPortableSha256Kernel;
    });
    return *first_;
}

Sha256Plan Sha256Engine::MakePlan() const {
    std::vector<const Sha256Kernel*> usable;
    std::copy_if(kernels_.begin(), kernels_.end(), std::back_inserter(usable),
                 [](const Sha256Kernel* kernel) { return IsUsable(*kernel); });
    if (usable.empty()) {
        usable.push_back(&kPortableSha256Kernel);
    }
    return MakeSha256Plan(TimeSha256Kernels(usable));
}

const Sha256Engine& ProcessSha256Engine() {
    static const Sha256Engine engine([] {
        const auto kernels = CompiledSha256Kernels();
        return std::vector<const Sha256Kernel*>(kernels.begin(), kernels.end());
    }());
    return engine;
}

}  // namespace sealkeeper
