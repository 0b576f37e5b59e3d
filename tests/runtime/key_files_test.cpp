#include <gtest/gtest.h>
#include <mbedtls/version.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "runtime/key_der.h"
#include "runtime/key_file_tables.h"
#include "runtime/mbedtls_compat.h"
#include "runtime/mbedtls_contexts.h"
#include "runtime/mbedtls_result.h"
#include "runtime/signing_material.h"
#include "runtime/stored_signature.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::EncodedKey;
using test::EncodedKeyRow;
using test::KeyFile;
using test::KeyFileRow;
using test::KeyOutcome;
using test::TempDirectory;

const std::string& Expected(const KeyOutcome& outcome) {
    return MBEDTLS_VERSION_MAJOR < 3 ? outcome.with228 : outcome.with3;
}

// Whether the key's signatures verify with its certificate.
bool Signs(SigningMaterial& material) {
    const std::vector<std::uint8_t> data = {1, 2, 3};
    StoredSignature signature;
    const SigningOutcome outcome = MakeSignature(material.privateKey.Get(), data, signature.area);
    signature.lengthBytes = static_cast<std::uint32_t>(outcome.lengthBytes);
    return outcome.isSeeded && outcome.result == 0 &&
           VerifySignature(&material.certificate.Get()->pk, data, signature) == 0;
}

// The outcome of a key file in the words of the tables; the code and the text if the tables have no
// words for it.
std::string Outcome(const SigningFiles& files) {
    SigningMaterial material;
    CapturedOutput output;
    const ResultCode code = LoadSigningMaterial(files, "", TrustCheck::Skipped, material);
    const std::string text = output.Take();
    const std::string number = std::to_string(ResultCodeNumber(code));
    if (code == ResultCode::Ok && text.empty() && Signs(material)) {
        return "taken";
    }
    if (text == "[Err!] Error reading RSA private key file '" + files.privateKeyFile + "' (" +
                    number + ").\n") {
        return number;
    }
    if (code == ResultCode::MbedTlsGenericError &&
        text == "[Err!] Public key in certificate file " + files.certificateFile +
                    " does not match private key file '" + files.privateKeyFile + "'.\n") {
        return "no pair";
    }
    return number + ": " + text;
}

class KeyFiles : public testing::Test {
  protected:
    void Expect(const KeyOutcome& outcome, const KeyFile& file) {
        // A new file each time, since some file systems wait for the disk when one is rewritten.
        const std::string path = directory_.WriteFile(std::to_string(files_++), file.content);
        EXPECT_EQ(Outcome({path, file.certificatePath, ""}), Expected(outcome)) << file.name;
    }

    TempDirectory directory_;
    int files_ = 0;
};

TEST_F(KeyFiles, AreTakenOrRefusedAsThePageSays) {
    for (const KeyFileRow& row : test::KeyFileTable()) {
        SCOPED_TRACE(row.file);
        for (const KeyFile& file : row.files) {
            Expect(row.outcome, file);
        }
    }
}

TEST_F(KeyFiles, KeysInDerAreTakenOrRefusedAsThePageSays) {
    for (const EncodedKeyRow& row : test::EncodedKeyTable()) {
        SCOPED_TRACE(row.key);
        for (const EncodedKey& key : row.keys) {
            Expect(row.asDer, {key.name, key.der});
        }
    }
}

TEST_F(KeyFiles, KeysInPemAreTakenOrRefusedAsThePageSays) {
    for (const EncodedKeyRow& row : test::EncodedKeyTable()) {
        SCOPED_TRACE(row.key);
        for (const EncodedKey& key : row.keys) {
            Expect(row.asPem, {key.name, test::Pem(key.pemLabel, key.der)});
        }
    }
}

// Except for the last byte of a PEM file, an optional line feed.
TEST_F(KeyFiles, CutOffAnywhereNoneIsTaken) {
    for (const std::string name : {"pkcs1.der", "pkcs8.der", "pkcs1.pem", "pkcs8.pem"}) {
        const std::string whole = test::ReadFile(test::CredentialPath("key-forms", name));
        const std::size_t spare = whole.back() == '\n' ? 1 : 0;
        const std::string path = directory_.WriteFile(name, whole);
        for (std::size_t bytes = whole.size() - spare; bytes-- > 0;) {
            std::filesystem::resize_file(path, bytes);
            PrivateKey key;
            ASSERT_EQ(MapKeyError(ParsePrivateKeyFile(key.Get(), path.c_str())),
                      ResultCode::MbedTlsKeyFormatError)
                << name << " " << bytes;
        }
    }
}

// The rows of the page's tables, without headings.
std::string RowsOfThePage() {
    std::istringstream page(test::ReadFile(SEALKEEPER_PRIVATE_KEYS_PAGE));
    std::string rows;
    std::string heading;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("|---", 0) == 0) {
            rows.resize(rows.size() - heading.size() - 1);
        } else if (line.rfind('|', 0) == 0) {
            rows += line + "\n";
            heading = line;
        }
    }
    return rows;
}

TEST(PrivateKeysPage, HasTheTablesThatTheKeysAreTestedBy) {
    std::string rows;
    for (const KeyFileRow& row : test::KeyFileTable()) {
        rows += "| " + row.file + " | " + row.outcome.with228 + " | " + row.outcome.with3 + " |\n";
    }
    for (const EncodedKeyRow& row : test::EncodedKeyTable()) {
        rows += "| " + row.key + " | " + row.asDer.with228 + " | " + row.asDer.with3 + " | " +
                row.asPem.with228 + " | " + row.asPem.with3 + " |\n";
    }
    EXPECT_EQ(RowsOfThePage(), rows);
}

}  // namespace
}  // namespace sealkeeper
