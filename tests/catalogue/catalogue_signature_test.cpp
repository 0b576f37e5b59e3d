#include "catalogue/catalogue_signature.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "catalogue/stored_catalogue_support.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::Bytes;

using test::CapturedOutput;
using test::IsAllZero;
using test::LoadKey;
using test::MakeUnusableKey;
using test::SignatureArea;
using test::VerifySignature;

struct KeyCase {
    const char* kind;
    std::size_t signatureBytes;
};

TEST(CatalogueSignature, SignsWithKeysOfEverySize) {
    const std::vector<std::uint8_t> image = {1, 2, 3};
    for (const KeyCase& used : std::vector<KeyCase>{{"good", 256}, {"big-key", 512}}) {
        PrivateKey key;
        LoadKey(used.kind, key);
        SignatureArea area{};
        std::size_t length = 0;
        CapturedOutput output;
        EXPECT_EQ(SignCatalogueImage(key.Get(), image, area.data(), &length), ResultCode::Ok);
        EXPECT_EQ(output.Take(), "");
        ASSERT_EQ(length, used.signatureBytes) << used.kind;
        const std::span<const std::uint8_t> whole(area);
        EXPECT_EQ(VerifySignature(used.kind, image, whole.first(length)), 0) << used.kind;
        EXPECT_TRUE(IsAllZero(whole.subspan(length))) << used.kind;
        const std::vector<std::uint8_t> otherImage = {1, 2, 4};
        EXPECT_NE(VerifySignature(used.kind, otherImage, whole.first(length)), 0) << used.kind;
    }
}

TEST(CatalogueSignature, MayBeWrittenIntoTheImageThatItSigns) {
    PrivateKey key;
    LoadKey("good", key);
    std::vector<std::uint8_t> image(1052, 7);
    const std::vector<std::uint8_t> signedBytes = image;
    std::size_t length = 0;
    EXPECT_EQ(SignCatalogueImage(key.Get(), image, image.data() + 8, &length), ResultCode::Ok);
    EXPECT_EQ(VerifySignature("good", signedBytes, std::span(image).subspan(8, length)), 0);
}

TEST(CatalogueSignature, MissingArgumentsFailInSilence) {
    PrivateKey key;
    LoadKey("good", key);
    const std::vector<std::uint8_t> image = {1};
    SignatureArea area{};
    std::size_t length = 0;
    constexpr ResultCode kMissing = ResultCode::MbedTlsRandNumGenError;
    CapturedOutput output;
    EXPECT_EQ(SignCatalogueImage(nullptr, image, area.data(), &length), kMissing);
    EXPECT_EQ(SignCatalogueImage(key.Get(), {}, area.data(), &length), kMissing);
    EXPECT_EQ(SignCatalogueImage(key.Get(), image, nullptr, &length), kMissing);
    EXPECT_EQ(SignCatalogueImage(key.Get(), image, area.data(), nullptr), kMissing);
    EXPECT_EQ(output.Take(), "");
    EXPECT_TRUE(IsAllZero(area));
}

TEST(CatalogueSignature, KeyThatCannotSignIsAGenericError) {
    const std::vector<std::uint8_t> image = {1};
    SignatureArea area{};
    std::size_t length = 0;
    PrivateKey empty;
    EXPECT_EQ(SignCatalogueImage(empty.Get(), image, area.data(), &length),
              ResultCode::MbedTlsGenericError);
    PrivateKey unusable;
    MakeUnusableKey(unusable);
    EXPECT_EQ(SignCatalogueImage(unusable.Get(), image, area.data(), &length),
              ResultCode::MbedTlsGenericError);
    EXPECT_EQ(length, 0U);
}

// Verifies a file with an older header, whose signature covers `covered`, with the key of "good".
ResultCode VerifyOlderLayout(const Bytes& covered) {
    Certificate certificate;
    EXPECT_EQ(ParseCertificate(test::CertificateBytes("good"), certificate), 0);
    Bytes file = test::CatalogueOfCompressed({}, 0);
    test::StoreAt<std::uint16_t>(file, 6, 0);
    std::copy(covered.begin(), covered.end(), file.begin() + test::kCrlLengthOffset);
    test::SignImage(file, "good", test::kCrlLengthOffset);
    return VerifyCatalogueSignature(&certificate.Get()->pk, file);
}

// Body lengths stand at this place, so a genuine older file hardly ever begins like this. A file is
// refused only if all eight bytes match.
TEST(CatalogueSignature, OlderLayoutCoversNothingThatBeginsAsACurrentFile) {
    const Bytes current = {0x51, 0x56, 0x52, 0x00, 4, 0, 1, 0};
    EXPECT_EQ(VerifyOlderLayout(current), ResultCode::MbedTlsGenericError);
    for (std::size_t offset = 0; offset < current.size(); ++offset) {
        Bytes other = current;
        other[offset] ^= 0x80U;
        EXPECT_EQ(VerifyOlderLayout(other), ResultCode::Ok) << offset;
    }
}

}  // namespace
}  // namespace sealkeeper
