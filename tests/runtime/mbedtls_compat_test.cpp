#include "runtime/mbedtls_compat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "runtime/mbedtls_contexts.h"
#include "support/credentials.h"

namespace sealkeeper {
namespace {

TEST(MbedTlsCompat, Sha256OfKnownTexts) {
    // The examples of FIPS 180-4.
    EXPECT_EQ(test::Sha256Hex(test::BytesOf("abc")),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(test::Sha256Hex({}),
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(MbedTlsCompat, WhatASignatureLeavesOfItsRoomIsZero) {
    PrivateKey key;
    ASSERT_EQ(ParsePrivateKeyFile(key.Get(), test::PrivateKeyPath("good").c_str()), 0);
    RandomGenerator random;
    ASSERT_TRUE(random.Seed());
    std::array<std::uint8_t, 1024> area{};
    area.fill(0x21);
    std::size_t signatureBytes = 0;
    ASSERT_EQ(SignSha256Digest(key.Get(), Sha256Digest{}, area, signatureBytes, random), 0);
    ASSERT_EQ(signatureBytes, 256U);
    EXPECT_TRUE(std::all_of(area.begin() + 256, area.end(), [](auto byte) { return byte == 0; }));
}

#ifdef MBEDTLS_PK_RSA_ALT_SUPPORT

// A key whose signatures have as many bytes as the number its context points to.
std::size_t g_signings = 0;

std::size_t KeyBytes(void* key) {
    return *static_cast<std::size_t*>(key);
}

int RefuseToDecrypt(void* /*key*/,
#if MBEDTLS_VERSION_MAJOR < 3
                    int /*mode*/,
#endif
                    std::size_t* /*length*/, const unsigned char* /*input*/,
                    unsigned char* /*output*/, std::size_t /*room*/) {
    return MBEDTLS_ERR_PK_FEATURE_UNAVAILABLE;
}

int CountSigning(void* /*key*/, int (* /*random*/)(void*, unsigned char*, std::size_t),
                 void* /*generator*/,
#if MBEDTLS_VERSION_MAJOR < 3
                 int /*mode*/,
#endif
                 mbedtls_md_type_t /*digestType*/, unsigned int /*digestBytes*/,
                 const unsigned char* /*digest*/, unsigned char* /*signature*/) {
    ++g_signings;
    return 0;
}

int SignWithKeyOf(std::size_t keyBytes, std::size_t& signatureBytes) {
    PrivateKey key;
    EXPECT_EQ(
        mbedtls_pk_setup_rsa_alt(key.Get(), &keyBytes, RefuseToDecrypt, CountSigning, KeyBytes), 0);
    RandomGenerator random;
    EXPECT_TRUE(random.Seed());
    // The library itself refuses what does not fit the largest signature of all, so less is given.
    std::array<std::uint8_t, 1024> area{};
    return SignSha256Digest(key.Get(), Sha256Digest{}, std::span(area).first(512), signatureBytes,
                            random);
}

TEST(MbedTlsCompat, SignatureThatHasNoRoomIsNeverMade) {
    g_signings = 0;
    std::size_t signatureBytes = 0;
    EXPECT_EQ(SignWithKeyOf(512, signatureBytes), 0);
    EXPECT_EQ(signatureBytes, 512U);
    EXPECT_EQ(g_signings, 1U);
    EXPECT_NE(SignWithKeyOf(513, signatureBytes), 0);
    EXPECT_EQ(g_signings, 1U);
}

#endif

}  // namespace
}  // namespace sealkeeper
