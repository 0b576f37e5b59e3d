#include "catalogue/hashing/sha256_streams.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "fault/fault_injection.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;

struct HashFault {
    const char* name;
    Call call;
    std::size_t firstFailing;
};

// Two steps of one block each on `stream`, and two bytes.
int HashInSteps(Sha256Streams& streams, std::size_t stream,
                const std::vector<std::uint8_t>& message, Sha256Digest& digest) {
    streams.Start(stream);
    for (std::size_t block = 0; block < 2; ++block) {
        const Sha256Step step{stream, message.data() + block * kSha256BlockBytes};
        streams.Take({&step, 1}, 1);
    }
    return streams.Finish(stream, std::span(message).subspan(2 * kSha256BlockBytes), digest);
}

TEST(Sha256StreamsFaults, ErrorOfTheLibraryStaysUntilTheStreamStartsAgain) {
    const auto message = test::BytesOf(test::PatternText(2 * kSha256BlockBytes + 2));
    const std::vector<HashFault> faults = {
        {"start", Call::Sha256Start, 0},        {"first step", Call::Sha256Update, 0},
        {"second step", Call::Sha256Update, 1}, {"last bytes", Call::Sha256Update, 2},
        {"finish", Call::Sha256Finish, 0},
    };
    const auto streams = MakeMbedTlsSha256Streams();
    for (const HashFault& failing : faults) {
        Sha256Digest digest{};
        {
            const ScopedFault fault(failing.call, failing.firstFailing, ScopedFault::Reach::Once);
            EXPECT_NE(HashInSteps(*streams, 1, message, digest), 0) << failing.name;
            EXPECT_TRUE(fault.Struck()) << failing.name;
            EXPECT_EQ(HashInSteps(*streams, 0, message, digest), 0) << failing.name;
        }
        EXPECT_EQ(HashInSteps(*streams, 1, message, digest), 0) << failing.name;
        EXPECT_EQ(test::Hex(digest), test::Sha256Hex(message)) << failing.name;
    }
}

}  // namespace
}  // namespace sealkeeper
