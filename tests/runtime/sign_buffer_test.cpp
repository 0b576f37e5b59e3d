#include "runtime/sign_buffer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "runtime/signing_test_support.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::IsAllZero;
using test::LoadKey;
using test::MakeUnusableKey;
using test::SignatureArea;
using test::VerifySignature;

const std::vector<std::uint8_t> kData = {1, 2, 3};

struct KeySizeCase {
    const char* kind;
    std::uint64_t signatureBytes;
};

TEST(SignBuffer, SignsWithKeysOfEverySize) {
    for (const KeySizeCase& used : std::vector<KeySizeCase>{{"good", 256}, {"big-key", 512}}) {
        PrivateKey key;
        LoadKey(used.kind, key);
        SignatureArea area{};
        std::uint64_t length = 0;
        CapturedOutput output;
        EXPECT_TRUE(SignBuffer(key.Get(), kData.data(), kData.size(), area.data(), &length));
        EXPECT_EQ(output.Take(), "");
        ASSERT_EQ(length, used.signatureBytes);
        const std::span<const std::uint8_t> whole(area);
        EXPECT_EQ(VerifySignature(used.kind, kData, whole.first(used.signatureBytes)), 0);
        EXPECT_TRUE(IsAllZero(whole.subspan(used.signatureBytes)));
    }
}

TEST(SignBuffer, SignsNoBytes) {
    PrivateKey key;
    LoadKey("good", key);
    SignatureArea area{};
    std::uint64_t length = 0;
    EXPECT_TRUE(SignBuffer(key.Get(), kData.data(), 0, area.data(), &length));
    ASSERT_EQ(length, 256U);
    EXPECT_EQ(VerifySignature("good", {}, std::span(area).first(256)), 0);
}

TEST(SignBuffer, MissingArgumentsAreReported) {
    PrivateKey key;
    LoadKey("good", key);
    SignatureArea area;
    area.fill(7);
    std::uint64_t length = 7;
    CapturedOutput output;
    EXPECT_FALSE(SignBuffer(nullptr, kData.data(), kData.size(), area.data(), &length));
    EXPECT_FALSE(SignBuffer(key.Get(), nullptr, 0, area.data(), &length));
    EXPECT_FALSE(SignBuffer(key.Get(), kData.data(), kData.size(), nullptr, &length));
    EXPECT_FALSE(SignBuffer(key.Get(), kData.data(), kData.size(), area.data(), nullptr));
    std::string fourTimes;
    for (int i = 0; i < 4; ++i) {
        fourTimes += "[Err!] Called with invalid parameters.\n";
    }
    EXPECT_EQ(output.Take(), fourTimes);
    EXPECT_EQ(length, 7U);
    EXPECT_EQ(area[0], 7);
}

TEST(SignBuffer, FailureOfTheLibraryLeavesNoSignature) {
    PrivateKey key;
    MakeUnusableKey(key);
    SignatureArea area;
    area.fill(7);
    std::uint64_t length = 7;
    CapturedOutput output;
    EXPECT_FALSE(SignBuffer(key.Get(), kData.data(), kData.size(), area.data(), &length));
    EXPECT_EQ(output.Take(), "");
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(area[0], 0);
}

}  // namespace
}  // namespace sealkeeper
