#include "catalogue/hashing/sha256_kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <vector>

#include "catalogue/hashing/sha256_test_support.h"
#include "catalogue/hashing/x86_features.h"

namespace sealkeeper {
namespace {

using Compress = decltype(Sha256Kernel::compress);

// Kernels are stateless functions, so the fault is configured through globals.
const Sha256Kernel* wrapped = nullptr;
Compress faultyCompress = nullptr;
std::size_t faultyLaneCount = 0;

void CompressWithFault(const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
    const bool isFaulty = laneCount == faultyLaneCount;
    (isFaulty ? faultyCompress : wrapped->compress)(lanes, laneCount, blockCount);
}

struct Fault {
    const char* description;
    // With fewer lanes the fault has no effect.
    std::size_t leastLanes;
    Compress compress;
};

void SwapFirstAndLastState(const Sha256Lane* lanes, std::size_t laneCount) {
    std::uint32_t* const first = lanes[0].state;
    std::swap_ranges(first, first + kSha256StateWords, lanes[laneCount - 1].state);
}

constexpr std::array kFaults = {
    Fault{"a bit of the last lane's state is wrong", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              wrapped->compress(lanes, laneCount, blockCount);
              lanes[laneCount - 1].state[kSha256StateWords - 1] ^= 1U;
          }},
    Fault{"the first block of a call is taken for all of its blocks", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              for (std::size_t block = 0; block < blockCount; ++block) {
                  wrapped->compress(lanes, laneCount, 1);
              }
          }},
    Fault{"the first block of a call is the only one that is taken", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              wrapped->compress(lanes, laneCount, std::min<std::size_t>(blockCount, 1));
          }},
    Fault{"a third block is not taken", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              wrapped->compress(lanes, laneCount, std::min<std::size_t>(blockCount, 2));
          }},
    Fault{"two lanes begin with each other's state", 2,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              SwapFirstAndLastState(lanes, laneCount);
              wrapped->compress(lanes, laneCount, blockCount);
          }},
    Fault{"two lanes end with each other's state", 2,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              wrapped->compress(lanes, laneCount, blockCount);
              SwapFirstAndLastState(lanes, laneCount);
          }},
    Fault{"the last lane takes the blocks of the first", 2,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              std::array<Sha256Lane, kMaxSha256Lanes> wrong{};
              std::copy_n(lanes, laneCount, wrong.begin());
              wrong[laneCount - 1].blocks = wrong[0].blocks;
              wrapped->compress(wrong.data(), laneCount, blockCount);
          }},
    Fault{"the last lane is ignored", 1,
          [](const Sha256Lane* lanes, std::size_t laneCount, std::size_t blockCount) {
              wrapped->compress(lanes, laneCount - 1, blockCount);
          }},
};

std::vector<const Sha256Kernel*> AllKernels() {
    const auto kernels = CompiledSha256Kernels();
    return {kernels.begin(), kernels.end()};
}

// The parameter is a compiled kernel.
class Sha256KernelUseTest : public testing::TestWithParam<const Sha256Kernel*> {
  protected:
    void SetUp() override {
        wrapped = GetParam();
        if (!wrapped->isSupported()) {
            GTEST_SKIP() << "this processor does not have the instructions: " << wrapped->name;
        }
    }
};

TEST_P(Sha256KernelUseTest, IsUsable) {
    EXPECT_TRUE(IsUsable(*GetParam()));
}

TEST_P(Sha256KernelUseTest, IsNotUsableOnAProcessorWithoutTheInstructions) {
    Sha256Kernel unsupported = *GetParam();
    unsupported.isSupported = [] { return false; };
    EXPECT_FALSE(IsUsable(unsupported));
}

TEST_P(Sha256KernelUseTest, IsNotUsableWithAFaultAtOneNumberOfLanes) {
    Sha256Kernel faulty = *GetParam();
    faulty.compress = CompressWithFault;
    faultyLaneCount = 0;
    ASSERT_TRUE(IsUsable(faulty));
    for (faultyLaneCount = 1; faultyLaneCount <= faulty.maxLanes; ++faultyLaneCount) {
        for (const Fault& fault : kFaults) {
            if (faultyLaneCount >= fault.leastLanes) {
                faultyCompress = fault.compress;
                EXPECT_FALSE(IsUsable(faulty))
                    << fault.description << ", of " << faultyLaneCount << " lanes";
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKernel, Sha256KernelUseTest, testing::ValuesIn(AllKernels()),
                         test::KernelTestName);

TEST(Sha256Kernels, HaveNoMoreLanesThanTheConstant) {
    for (const Sha256Kernel* kernel : CompiledSha256Kernels()) {
        EXPECT_GE(kernel->maxLanes, 1U) << kernel->name;
        EXPECT_LE(kernel->maxLanes, kMaxSha256Lanes) << kernel->name;
    }
}

// A Linux build is for a single architecture.
#if defined(__linux__) && defined(__GNUC__)
TEST(Sha256Kernels, AreCompiledForTheirArchitectures) {
#if defined(__x86_64__)
    const std::vector<const Sha256Kernel*> expected = {
        &kShaExtensionsSha256Kernel, &kPortableSha256Kernel, &kAvx512Sha256Kernel,
        &kAvx512ShortChainSha256Kernel, &kAvx2Sha256Kernel};
#elif defined(__aarch64__)
    const std::vector<const Sha256Kernel*> expected = {&kArmSha256Kernel, &kPortableSha256Kernel};
#else
    const std::vector<const Sha256Kernel*> expected = {&kPortableSha256Kernel};
#endif
    EXPECT_EQ(AllKernels(), expected);
}
#endif

#if defined(__linux__) && defined(__GNUC__) && defined(__x86_64__)
TEST(Sha256Kernels, AreSupportedWhereTheProcessorHasTheirInstructions) {
    const X86Features& features = ProcessorX86Features();
    EXPECT_EQ(kShaExtensionsSha256Kernel.isSupported(), features.shaExtensions);
    EXPECT_EQ(kAvx512Sha256Kernel.isSupported(), features.avx512);
    EXPECT_EQ(kAvx512ShortChainSha256Kernel.isSupported(), features.avx512);
    EXPECT_EQ(kAvx2Sha256Kernel.isSupported(), features.avx2);
}
#endif

}  // namespace
}  // namespace sealkeeper
