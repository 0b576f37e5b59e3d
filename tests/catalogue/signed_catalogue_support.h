// Signed catalogue files with their certificates, and reading them.
#ifndef SEALKEEPER_TESTS_CATALOGUE_SIGNED_CATALOGUE_SUPPORT_H
#define SEALKEEPER_TESTS_CATALOGUE_SIGNED_CATALOGUE_SUPPORT_H

#include <gtest/gtest.h>

#include <string>

#include "catalogue/hash_catalogue.h"
#include "catalogue/stored_catalogue_support.h"
#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper::test {

// Catalogues and their certificates in a fresh current directory.
class SignedCatalogueTest : public testing::Test {
  protected:
    SignedCatalogueTest() : here_(directory_.Path()) { WriteCertificate("good"); }

    void Write(const Bytes& image, const std::string& name = "base.bin") const {
        directory_.WriteFile(name, TextOfBytes(image));
    }
    void WriteCertificate(const std::string& kind, const std::string& name = "base.cer") const {
        directory_.WriteFile(name, TextOfBytes(CertificateBytes(kind)));
    }

    // Also checks that nothing is printed.
    ResultCode Read(const std::wstring& path = L"base.bin", ByteView parent = {},
                    ByteView parentCrl = {}) {
        HashCatalogue catalogue(kTestProductId);
        return ReadWith(catalogue, path, parent, parentCrl);
    }
    ResultCode ReadWith(HashCatalogue& catalogue, const std::wstring& path = L"base.bin",
                        ByteView parent = {}, ByteView parentCrl = {}) {
        CapturedOutput output;
        const ResultCode code =
            catalogue.ReadAndVerifyCatalogue(path, parent, parentCrl, contents_);
        EXPECT_EQ(output.Take(), "");
        if (code != ResultCode::Ok) {
            EXPECT_TRUE(contents_.entries.empty());
            EXPECT_TRUE(contents_.crlBlock.empty());
            EXPECT_TRUE(contents_.certificateBytes.empty());
        }
        return code;
    }
    ResultCode ReadImage(const Bytes& image) {
        Write(image);
        return Read();
    }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    CatalogueContents contents_;
};

// One entry and a revocation list of three bytes.
[[nodiscard]] inline Bytes SmallImage() {
    return CatalogueOf(RecordOfFile(u"a", "hello"), 1, {1, 2, 3});
}

[[nodiscard]] inline Bytes SignedImage(const std::string& kind = "good") {
    Bytes image = SmallImage();
    SignImage(image, kind);
    return image;
}

}  // namespace sealkeeper::test

#endif
