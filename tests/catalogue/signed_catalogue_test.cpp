#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "catalogue/signed_catalogue_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "runtime/mbedtls_result.h"

namespace sealkeeper {
namespace {

using test::Bytes;
using test::SignedImage;
using test::SignImage;
using test::SmallImage;
using test::StoreAt;

constexpr std::size_t kSignatureBytes = 256;

// An image with an older layout, whose signature covers the file from offset 1036.
Bytes OlderImage(std::uint16_t layout) {
    Bytes image = SmallImage();
    StoreAt(image, 6, layout);
    SignImage(image, "good", 1036);
    return image;
}

// Accepts every certificate, so that a thousand files are read quickly. What a signature covers
// does not depend on who issued the certificate.
class TrustingCatalogue : public HashCatalogue {
  public:
    TrustingCatalogue() : HashCatalogue("") {}
    ResultCode VerifySigningCertificate(ByteView certificate, ByteView /*parent*/,
                                        ByteView /*parentCrl*/, Certificate& parsed) override {
        return MapX509Error(ParseCertificate(certificate, parsed), 0);
    }
};

class SignedCatalogue : public test::SignedCatalogueTest {
  protected:
    ResultCode ReadTrusted(const Bytes& image) {
        TrustingCatalogue catalogue;
        Write(image);
        return ReadWith(catalogue);
    }
};

TEST_F(SignedCatalogue, EveryTruncationIsInvalid) {
    const Bytes whole = SignedImage();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes some(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(ReadImage(some), ResultCode::FileInvalid) << size;
    }
    Bytes longer = whole;
    longer.push_back(0);
    EXPECT_EQ(ReadImage(longer), ResultCode::FileInvalid);
}

ResultCode CodeOfChangeAt(std::size_t offset) {
    if (offset < 6 || (offset >= 1036 && offset < 1044)) {
        return ResultCode::FileInvalid;
    }
    // The rest of the signature area is not signed.
    const bool isTail = offset >= 8 + kSignatureBytes && offset < 1032;
    return isTail ? ResultCode::Ok : ResultCode::MbedTlsGenericError;
}

TEST_F(SignedCatalogue, EverySingleByteChangeOutsideTheTailIsRefused) {
    const Bytes whole = SignedImage();
    for (std::size_t offset = 0; offset < whole.size(); ++offset) {
        Bytes changed = whole;
        changed[offset] ^= static_cast<std::uint8_t>(1U << (offset % 8));
        EXPECT_EQ(ReadTrusted(changed), CodeOfChangeAt(offset)) << offset;
    }
}

TEST_F(SignedCatalogue, OlderLayoutsAreSignedFromTheEndOfTheSignature) {
    for (const std::uint16_t layout : std::vector<std::uint16_t>{0, 2, 256, 257, 65535}) {
        EXPECT_EQ(ReadImage(OlderImage(layout)), ResultCode::Ok) << layout;
        EXPECT_EQ(contents_.entries.size(), 1U);
    }
    // Each layout signs different bytes.
    Bytes claimed = OlderImage(0);
    StoreAt<std::uint16_t>(claimed, 6, 1);
    EXPECT_EQ(ReadImage(claimed), ResultCode::MbedTlsGenericError);
    Bytes wholeFile = SmallImage();
    StoreAt<std::uint16_t>(wholeFile, 6, 0);
    SignImage(wholeFile, "good");
    EXPECT_EQ(ReadImage(wholeFile), ResultCode::MbedTlsGenericError);
}

// The signature of a current file would also fit if the file followed an older header. Its first
// bytes are then read as lengths: 0x00525651 and 0x00010004.
TEST_F(SignedCatalogue, SignedFileAfterAnOlderHeaderIsRefused) {
    constexpr std::size_t kInnerBytes = 0x00525651 + 0x00010004 + 16;
    Bytes inner = test::CatalogueOfCompressed({}, 0, Bytes(kInnerBytes - test::kHeaderBytes));
    SignImage(inner, "good");
    EXPECT_EQ(ReadImage(inner), ResultCode::Ok);
    Bytes outer(inner.begin(), inner.begin() + 1036);
    outer[6] = 0;
    std::fill(inner.begin() + 8, inner.begin() + 1036, std::uint8_t{0});
    outer.insert(outer.end(), inner.begin(), inner.end());
    EXPECT_EQ(ReadImage(outer), ResultCode::MbedTlsGenericError);
}

TEST_F(SignedCatalogue, EverySignedByteOfAnOlderLayoutCounts) {
    const Bytes whole = OlderImage(2);
    for (std::size_t offset = 1036; offset < whole.size(); ++offset) {
        Bytes changed = whole;
        changed[offset] ^= 0x10U;
        EXPECT_EQ(ReadTrusted(changed), CodeOfChangeAt(offset)) << offset;
    }
}

TEST_F(SignedCatalogue, SignatureLengths) {
    const Bytes whole = SignedImage();
    for (const std::uint32_t length :
         {0U, 1U, 255U, 257U, 512U, 1024U, 1025U, 65536U, 0xFFFFFFFFU}) {
        Bytes changed = whole;
        StoreAt(changed, test::kSignatureLengthOffset, length);
        EXPECT_EQ(ReadImage(changed), ResultCode::MbedTlsGenericError) << length;
    }
}

}  // namespace
}  // namespace sealkeeper
