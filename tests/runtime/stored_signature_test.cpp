#include "runtime/stored_signature.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "runtime/signing_test_support.h"

namespace sealkeeper {
namespace {

using test::IsAllZero;

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kAreaBytes = 1024;

TEST(StoredSignature, IsTakenOutAndLeavesZeros) {
    Bytes file(3 + kAreaBytes + 4 + 2, 0xEE);
    for (std::size_t i = 0; i < kAreaBytes; ++i) {
        file[3 + i] = static_cast<std::uint8_t>(i % 253 + 1);
    }
    const Bytes length = {0x04, 0x03, 0x02, 0x81};
    std::copy(length.begin(), length.end(), file.begin() + 3 + kAreaBytes);
    const Bytes before = file;
    const StoredSignature signature = TakeSignature(file, 3);
    EXPECT_TRUE(std::equal(signature.area.begin(), signature.area.end(), before.begin() + 3));
    EXPECT_EQ(signature.lengthBytes, 0x81020304U);
    EXPECT_TRUE(IsAllZero(std::span(file).subspan(3, kAreaBytes + 4)));
    EXPECT_EQ(Bytes(file.begin(), file.begin() + 3), Bytes(3, 0xEE));
    EXPECT_EQ(Bytes(file.end() - 2, file.end()), Bytes(2, 0xEE));
}

TEST(StoredSignature, FileMayEndAfterTheLength) {
    Bytes file(kAreaBytes + 4, 0xEE);
    EXPECT_EQ(TakeSignature(file, 0).lengthBytes, 0xEEEEEEEEU);
    EXPECT_TRUE(IsAllZero(file));
}

// A signature of three bytes by a key, and the key of a certificate.
class StoredSignatureTest : public testing::Test {
  protected:
    void Sign(const std::string& kind) {
        PrivateKey key;
        test::LoadKey(kind, key);
        RandomGenerator random;
        ASSERT_TRUE(random.Seed());
        Sha256Digest digest{};
        ASSERT_EQ(ComputeSha256(data_, digest), 0);
        std::size_t length = 0;
        ASSERT_EQ(SignSha256Digest(key.Get(), digest, signature_.area, length, random), 0);
        signature_.lengthBytes = static_cast<std::uint32_t>(length);
    }

    [[nodiscard]] int Verify(const std::string& kind = "good") const {
        Certificate certificate;
        EXPECT_EQ(ParseCertificate(test::CertificateBytes(kind), certificate), 0);
        return VerifySignature(&certificate.Get()->pk, data_, signature_);
    }

    Bytes data_ = {1, 2, 3};
    StoredSignature signature_;
};

TEST_F(StoredSignatureTest, VerifiesWithTheKeyOfTheSignerAlone) {
    for (const char* kind : {"good", "big-key"}) {
        Sign(kind);
        EXPECT_EQ(Verify(kind), 0) << kind;
        EXPECT_LT(Verify("other-key"), 0) << kind;
    }
}

TEST_F(StoredSignatureTest, EveryPartOfItCounts) {
    Sign("good");
    // The rest of the signature area does not count.
    signature_.area[256] = 1;
    signature_.area[1023] = 1;
    EXPECT_EQ(Verify(), 0);
    for (const std::size_t offset : std::vector<std::size_t>{0, 128, 255}) {
        signature_.area[offset] ^= 1U;
        EXPECT_LT(Verify(), 0) << offset;
        signature_.area[offset] ^= 1U;
    }
    data_[2] = 4;
    EXPECT_LT(Verify(), 0);
    data_ = {1, 2};
    EXPECT_LT(Verify(), 0);
    data_ = {1, 2, 3};
    EXPECT_EQ(Verify(), 0);
}

TEST_F(StoredSignatureTest, LengthMustBeThatOfTheKey) {
    Sign("good");
    for (const std::uint32_t length : {0U, 1U, 255U, 257U, 1023U, 1024U}) {
        signature_.lengthBytes = length;
        EXPECT_LT(Verify(), 0) << length;
    }
    // Neither the bytes outside the area nor the signature are looked at.
    signature_.area[0] ^= 1U;
    for (const std::uint32_t length : {1025U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        signature_.lengthBytes = length;
        EXPECT_EQ(Verify(), MBEDTLS_ERR_PK_SIG_LEN_MISMATCH) << length;
    }
}

TEST_F(StoredSignatureTest, NothingMayBeSigned) {
    data_.clear();
    Sign("good");
    EXPECT_EQ(Verify(), 0);
}

}  // namespace
}  // namespace sealkeeper
