#include "catalogue/hashing/sha256_streams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "catalogue/catalogue_test_support.h"

namespace sealkeeper {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Digests = std::vector<std::string>;
using test::BytesOf;
using test::Hex;
using test::Sha256Hex;

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

struct Implementation {
    const char* name;
    // Null for mbed TLS.
    const Sha256Kernel* kernel;
};

// How the names of the tests show it.
void PrintTo(const Implementation& implementation, std::ostream* out) {
    *out << implementation.name;
}

std::vector<Implementation> Implementations() {
    std::vector<Implementation> implementations = {{"MbedTls", nullptr}};
    if (const Sha256Kernel* kernel = CompiledSha256Kernel(); kernel != nullptr) {
        implementations.push_back({"Kernel", kernel});
    }
    return implementations;
}

// Another message for each number. No two blocks of it are alike.
Bytes Message(std::size_t sizeBytes, std::size_t number) {
    Bytes bytes(sizeBytes);
    auto state = static_cast<std::uint32_t>(number);
    for (std::uint8_t& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(state >> 24U);
    }
    return bytes;
}

Digests ExpectedDigests(const std::vector<Bytes>& messages) {
    Digests digests;
    for (const Bytes& message : messages) {
        digests.push_back(Sha256Hex(message));
    }
    return digests;
}

std::string FinishText(Sha256Streams& streams, std::size_t stream,
                       std::span<const std::uint8_t> lastBytes) {
    Sha256Digest digest{};
    return streams.Finish(stream, lastBytes, digest) == 0 ? Hex(digest) : "an error";
}

// The digest of each message, one a stream. All streams that have a whole block left take part in
// each step; a stream ends as soon as it has none.
Digests DigestsOf(Sha256Streams& streams,
                  const std::vector<std::span<const std::uint8_t>>& messages,
                  std::size_t mostBlocks) {
    std::vector<std::span<const std::uint8_t>> left = messages;
    Digests digests(messages.size());
    for (std::size_t stream = 0; stream < left.size(); ++stream) {
        streams.Start(stream);
    }
    for (;;) {
        std::vector<Sha256Step> steps;
        std::size_t blockCount = mostBlocks;
        for (std::size_t stream = 0; stream < left.size(); ++stream) {
            const std::size_t blocksLeft = left[stream].size() / kSha256BlockBytes;
            if (blocksLeft > 0) {
                steps.push_back({stream, left[stream].data()});
                blockCount = std::min(blockCount, blocksLeft);
            } else if (digests[stream].empty()) {
                digests[stream] = FinishText(streams, stream, left[stream]);
            }
        }
        if (steps.empty()) {
            return digests;
        }
        streams.Take(steps, blockCount);
        for (const Sha256Step& step : steps) {
            left[step.stream] = left[step.stream].subspan(blockCount * kSha256BlockBytes);
        }
    }
}

// Parameters: the implementation and the number of streams.
class Sha256StreamsTest : public testing::TestWithParam<std::tuple<Implementation, std::size_t>> {
  protected:
    void SetUp() override {
        const Sha256Kernel* kernel = std::get<0>(GetParam()).kernel;
        if (kernel != nullptr && !kernel->isSupported()) {
            GTEST_SKIP() << "this processor does not have the instructions: " << kernel->name;
        }
        streams_ =
            kernel != nullptr ? MakeKernelSha256Streams(*kernel) : MakeMbedTlsSha256Streams();
    }

    [[nodiscard]] static std::size_t StreamCount() { return std::get<1>(GetParam()); }

    // Hashes messages of these sizes, one a stream, whose first bytes are at each of these offsets
    // from the start of an allocation, and whose last bytes end it.
    void ExpectDigests(const std::vector<std::size_t>& sizesBytes,
                       const std::vector<std::size_t>& offsets, std::size_t mostBlocks) {
        std::vector<Bytes> messages;
        std::vector<Bytes> allocations;
        std::vector<std::span<const std::uint8_t>> placed;
        for (std::size_t stream = 0; stream < sizesBytes.size(); ++stream) {
            messages.push_back(Message(sizesBytes[stream], stream));
            Bytes allocation(offsets[stream] + sizesBytes[stream]);
            std::copy(messages.back().rbegin(), messages.back().rend(), allocation.rbegin());
            allocations.push_back(std::move(allocation));
            placed.push_back(std::span(allocations.back()).subspan(offsets[stream]));
        }
        EXPECT_EQ(DigestsOf(*streams_, placed, mostBlocks), ExpectedDigests(messages))
            << "sizes " << testing::PrintToString(sizesBytes) << ", offsets "
            << testing::PrintToString(offsets) << ", blocks a step " << mostBlocks;
    }

    void ExpectDigests(const std::vector<std::size_t>& sizesBytes, std::size_t mostBlocks) {
        ExpectDigests(sizesBytes, std::vector<std::size_t>(sizesBytes.size()), mostBlocks);
    }

    // The value of `function` for each stream.
    template <typename Function>
    [[nodiscard]] static std::vector<std::size_t> ForEachStream(Function function) {
        std::vector<std::size_t> values;
        for (std::size_t stream = 0; stream < StreamCount(); ++stream) {
            values.push_back(function(stream));
        }
        return values;
    }

    void ExpectKnownAnswer(const std::string& message, const std::string& digest) {
        const Bytes bytes = BytesOf(message);
        const std::vector<std::span<const std::uint8_t>> messages(StreamCount(), bytes);
        EXPECT_EQ(DigestsOf(*streams_, messages, kNoLimit), Digests(StreamCount(), digest));
    }

    std::unique_ptr<Sha256Streams> streams_;
};

TEST_P(Sha256StreamsTest, HashesEveryLengthUpTo300) {
    for (std::size_t length = 0; length <= 300; ++length) {
        ExpectDigests(std::vector<std::size_t>(StreamCount(), length), kNoLimit);
    }
}

TEST_P(Sha256StreamsTest, HashesDifferentLengthsUpTo300SideBySide) {
    for (std::size_t length = 0; length <= 300; ++length) {
        ExpectDigests(ForEachStream([=](std::size_t s) { return (length + 97 * s) % 301; }),
                      kNoLimit);
    }
}

TEST_P(Sha256StreamsTest, HashesLengthsAroundEachBlockBoundary) {
    for (std::size_t boundary = 5 * kSha256BlockBytes; boundary <= 8192;
         boundary += kSha256BlockBytes) {
        for (std::size_t length = boundary - 1; length <= boundary + 1; ++length) {
            ExpectDigests(std::vector<std::size_t>(StreamCount(), length), kNoLimit);
        }
        // Around the length from which on the padding takes a block more.
        for (std::size_t length = boundary + 55; length <= boundary + 56; ++length) {
            ExpectDigests(std::vector<std::size_t>(StreamCount(), length), kNoLimit);
        }
    }
}

TEST_P(Sha256StreamsTest, HashesLongAndShortMessagesSideBySide) {
    constexpr std::array<std::size_t, kMaxSha256Streams> kSizes = {0, 200003, 63, 65536};
    for (std::size_t shift = 0; shift < kSizes.size(); ++shift) {
        ExpectDigests(ForEachStream([&](std::size_t s) { return kSizes[(s + shift) % 4]; }),
                      kNoLimit);
    }
}

TEST_P(Sha256StreamsTest, ReadsFromAnyAlignment) {
    for (std::size_t offset = 0; offset < 16; ++offset) {
        ExpectDigests(std::vector<std::size_t>(StreamCount(), 5 * kSha256BlockBytes + 17),
                      std::vector<std::size_t>(StreamCount(), offset), kNoLimit);
        ExpectDigests(std::vector<std::size_t>(StreamCount(), 5 * kSha256BlockBytes + 17),
                      ForEachStream([=](std::size_t s) { return (offset + 5 * s) % 16; }), 2);
    }
}

TEST_P(Sha256StreamsTest, TakesAnyNumberOfBlocksAtATime) {
    for (const std::size_t mostBlocks : std::array<std::size_t, 7>{1, 2, 3, 5, 8, 31, 100}) {
        ExpectDigests(
            ForEachStream([](std::size_t s) { return (67 + 9 * s) * kSha256BlockBytes + s; }),
            mostBlocks);
    }
}

TEST_P(Sha256StreamsTest, RestartedStreamForgetsAndLeavesTheOthersAlone) {
    constexpr std::size_t kBlocks = 6;
    for (std::size_t restarted = 0; restarted < StreamCount(); ++restarted) {
        std::vector<Bytes> messages;
        std::vector<Sha256Step> firstHalves;
        for (std::size_t stream = 0; stream < StreamCount(); ++stream) {
            messages.push_back(Message(kBlocks * kSha256BlockBytes, stream));
            firstHalves.push_back({stream, messages[stream].data()});
            streams_->Start(stream);
        }
        streams_->Take(firstHalves, kBlocks / 2);
        std::vector<Sha256Step> secondHalves = firstHalves;
        for (Sha256Step& step : secondHalves) {
            step.blocks += kBlocks / 2 * kSha256BlockBytes;
        }
        streams_->Start(restarted);
        streams_->Take(secondHalves, kBlocks / 2);

        messages[restarted].erase(messages[restarted].begin(),
                                  messages[restarted].begin() + kBlocks / 2 * kSha256BlockBytes);
        Digests digests;
        for (std::size_t stream = 0; stream < StreamCount(); ++stream) {
            digests.push_back(FinishText(*streams_, stream, {}));
        }
        EXPECT_EQ(digests, ExpectedDigests(messages)) << "restarted " << restarted;
    }
}

TEST_P(Sha256StreamsTest, StepsNameStreamsInAnyOrder) {
    std::vector<std::size_t> chosen = {0, 1, 2, 3};
    do {
        std::vector<Bytes> messages;
        std::vector<Sha256Step> steps;
        for (std::size_t i = 0; i < StreamCount(); ++i) {
            messages.push_back(Message(4 * kSha256BlockBytes, i));
            streams_->Start(chosen[i]);
            steps.push_back({chosen[i], messages[i].data()});
        }
        streams_->Take(steps, 4);
        Digests digests;
        for (std::size_t i = 0; i < StreamCount(); ++i) {
            digests.push_back(FinishText(*streams_, chosen[i], {}));
        }
        EXPECT_EQ(digests, ExpectedDigests(messages)) << testing::PrintToString(chosen);
    } while (std::next_permutation(chosen.begin(), chosen.end()));
}

TEST_P(Sha256StreamsTest, TakesNothingWithoutStepsOrBlocks) {
    const std::vector<Bytes> messages(StreamCount(), Message(2 * kSha256BlockBytes, 0));
    std::vector<Sha256Step> steps;
    for (std::size_t stream = 0; stream < StreamCount(); ++stream) {
        streams_->Start(stream);
        steps.push_back({stream, messages[stream].data()});
    }
    streams_->Take({}, 2);
    streams_->Take(steps, 0);
    streams_->Take(steps, 2);
    streams_->Take({}, 2);
    for (Sha256Step& step : steps) {
        step.blocks = nullptr;
    }
    streams_->Take(steps, 0);

    Digests digests;
    for (std::size_t stream = 0; stream < StreamCount(); ++stream) {
        digests.push_back(FinishText(*streams_, stream, {}));
    }
    EXPECT_EQ(digests, ExpectedDigests(messages));
}

// The examples of the Secure Hash Standard.
TEST_P(Sha256StreamsTest, GivesTheKnownAnswers) {
    ExpectKnownAnswer("", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    ExpectKnownAnswer("abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    ExpectKnownAnswer("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
                      "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    ExpectKnownAnswer(std::string(1000000, 'a'),
                      "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

std::string CaseName(const testing::TestParamInfo<Sha256StreamsTest::ParamType>& info) {
    return std::string(std::get<0>(info.param).name) + std::to_string(std::get<1>(info.param));
}

INSTANTIATE_TEST_SUITE_P(EveryImplementation, Sha256StreamsTest,
                         testing::Combine(testing::ValuesIn(Implementations()),
                                          testing::Range<std::size_t>(1, kMaxSha256Streams + 1)),
                         CaseName);

// Linux builds are for one architecture each.
#if defined(__linux__) && defined(__GNUC__) && (defined(__x86_64__) || defined(__aarch64__))
TEST(Sha256Streams, HaveAKernelOnArchitecturesThatThereIsOneFor) {
    EXPECT_NE(CompiledSha256Kernel(), nullptr);
}
#endif

TEST(Sha256Streams, BestOnesAreOfTheKernelWhereItIsSupported) {
    const Sha256Kernel* kernel = CompiledSha256Kernel();
    const bool isSupported = kernel != nullptr && kernel->isSupported();
    EXPECT_STREQ(MakeSha256Streams()->Name(), isSupported ? kernel->name : "mbed TLS");
}

TEST(Sha256Streams, BestOnesOfThisProcessorGiveRightDigests) {
    std::vector<Bytes> messages;
    for (std::size_t stream = 0; stream < kMaxSha256Streams; ++stream) {
        messages.push_back(Message(10000 + 1000 * stream, stream));
    }
    for (int repetition = 0; repetition < 2; ++repetition) {
        const std::unique_ptr<Sha256Streams> streams = MakeSha256Streams();
        EXPECT_EQ(DigestsOf(*streams, {messages.begin(), messages.end()}, 7),
                  ExpectedDigests(messages));
    }
}

}  // namespace
}  // namespace sealkeeper
