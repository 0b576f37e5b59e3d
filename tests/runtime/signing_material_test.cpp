#include "runtime/signing_material.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "runtime/signing_test_support.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::CertificateBytes;
using test::CertificatePath;
using test::CredentialPath;
using test::kTestProductId;
using test::PrivateKeyPath;
using test::TempDirectory;

struct LoadCase {
    SigningFiles files;
    int code;
    std::string output;
};

SigningFiles FilesOf(const std::string& kind) {
    return {PrivateKeyPath(kind), CertificatePath(kind), ""};
}

void ExpectLoaded(const LoadCase& loaded, TrustCheck trustCheck = TrustCheck::Required) {
    SigningMaterial material;
    CapturedOutput output;
    const ResultCode code = LoadSigningMaterial(loaded.files, kTestProductId, trustCheck, material);
    EXPECT_EQ(output.Take(), loaded.output);
    EXPECT_EQ(ResultCodeNumber(code), loaded.code)
        << loaded.files.privateKeyFile << " " << loaded.files.certificateFile;
}

std::string NotVerified(const std::string& path, int code) {
    return "[Err!] Error verifying certificate file '" + path + "' (" + std::to_string(code) +
           ").\n"
           "[Err!] Make sure this certificate matches the product ID specified as an argument.\n";
}

std::string ChainNotValid(const std::string& path) {
    return "[Err!]     The chain from this certificate to the game's trusted certificate authority "
           "is not valid.\n    Check that " +
           path + " is a certificate issued from your game's hash catalogue CA.\n";
}

std::string KeyNotRead(const std::string& path, int code) {
    return "[Err!] Error reading RSA private key file '" + path + "' (" + std::to_string(code) +
           ").\n";
}

TEST(SigningMaterial, LoadsKeyCertificateAndOpaqueRevocationList) {
    const TempDirectory directory;
    SigningFiles files = FilesOf("good");
    files.crlFile = directory.WriteFile("crl", std::string("no\0list", 7));
    SigningMaterial material;
    CapturedOutput output;
    EXPECT_EQ(LoadSigningMaterial(files, kTestProductId, TrustCheck::Required, material),
              ResultCode::Ok);
    EXPECT_EQ(output.Take(), "");
    EXPECT_EQ(material.certificateBytes, CertificateBytes("good"));
    EXPECT_EQ(std::string(material.crlBytes.begin(), material.crlBytes.end()),
              std::string("no\0list", 7));
    EXPECT_EQ(CheckKeyPair(&material.certificate.Get()->pk, material.privateKey.Get()), 0);
    EXPECT_EQ(material.certificate.Get()->raw.len, material.certificateBytes.size());
}

TEST(SigningMaterial, LoadsWithoutARevocationListAndWithABigKey) {
    ExpectLoaded({FilesOf("good"), 0, ""});
    ExpectLoaded({FilesOf("big-key"), 0, ""});
}

TEST(SigningMaterial, EmptyRevocationListFileIsFine) {
    const TempDirectory directory;
    SigningFiles files = FilesOf("good");
    files.crlFile = directory.WriteFile("crl", "");
    ExpectLoaded({files, 0, ""});
}

// Each file is removed together with all later ones, which reveals the order.
TEST(SigningMaterial, FilesAreReadInOrder) {
    ExpectLoaded(
        {{"no.key", "no.cer", "no.crl"}, 27, "[Err!] Could not locate the CRL file 'no.crl'\n"});
    ExpectLoaded({{"no.key", "no.cer", ""}, 27, "[Err!] Failed to read certificate file no.cer\n"});
    ExpectLoaded({{"no.key", CredentialPath("damaged", "empty.cer"), ""},
                  35,
                  "[Err!] Could not locate the private key file 'no.key'\n"});
    ExpectLoaded(
        {{CredentialPath("damaged", "text.key"), CredentialPath("damaged", "empty.cer"), ""},
         15,
         KeyNotRead(CredentialPath("damaged", "text.key"), 15)});
}

TEST(SigningMaterial, EmptyPathsAreMissingFiles) {
    ExpectLoaded(
        {{PrivateKeyPath("good"), "", ""}, 27, "[Err!] Failed to read certificate file \n"});
    ExpectLoaded({{"", CertificatePath("good"), ""},
                  35,
                  "[Err!] Could not locate the private key file ''\n"});
}

TEST(SigningMaterial, DirectoriesAndFifosAreNeverWaitedFor) {
    const TempDirectory directory;
    const std::string fifo = directory / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {directory.Path(), fifo}) {
        ExpectLoaded({{PrivateKeyPath("good"), CertificatePath("good"), path},
                      27,
                      "[Err!] Could not locate the CRL file '" + path + "'\n"});
        ExpectLoaded({{PrivateKeyPath("good"), path, ""},
                      27,
                      "[Err!] Failed to read certificate file " + path + "\n"});
        ExpectLoaded({{path, CertificatePath("good"), ""}, 13, KeyNotRead(path, 13)});
    }
}

TEST(SigningMaterial, KeysThatCannotBeUsed) {
    struct Case {
        std::string path;
        int code;
    };
    for (const Case& key : std::vector<Case>{{PrivateKeyPath("encrypted-key"), 16},
                                             {CredentialPath("damaged", "empty.key"), 15},
                                             {CredentialPath("damaged", "text.key"), 15},
                                             {CredentialPath("damaged", "truncated.key"), 15},
                                             {CertificatePath("good"), 15}}) {
        ExpectLoaded(
            {{key.path, CertificatePath("good"), ""}, key.code, KeyNotRead(key.path, key.code)});
    }
}

TEST(SigningMaterial, CertificatesThatAreNotTrusted) {
    struct Case {
        std::string path;
        int code;
    };
    for (const Case& certificate :
         std::vector<Case>{{CertificatePath("expired"), 30},
                           {CertificatePath("expired-revoked"), 30},
                           {CertificatePath("other-name"), 31},
                           {CertificatePath("revoked"), 32},
                           {CredentialPath("damaged", "pem.cer"), 20},
                           {CredentialPath("damaged", "truncated.cer"), 20},
                           {CredentialPath("damaged", "empty.cer"), 20}}) {
        ExpectLoaded({{PrivateKeyPath("good"), certificate.path, ""},
                      certificate.code,
                      NotVerified(certificate.path, certificate.code)});
    }
}

TEST(SigningMaterial, BrokenChainIsExplained) {
    const std::string path = CertificatePath("foreign");
    ExpectLoaded({FilesOf("foreign"), 22, NotVerified(path, 22) + ChainNotValid(path)});
}

TEST(SigningMaterial, KeyOfAnotherCertificate) {
    const SigningFiles files = {PrivateKeyPath("other-key"), CertificatePath("good"), ""};
    const std::string text = "[Err!] Public key in certificate file " + files.certificateFile +
                             " does not match private key file '" + files.privateKeyFile + "'.\n";
    ExpectLoaded({files, 11, text});
    ExpectLoaded({files, 11, text}, TrustCheck::Skipped);
}

TEST(SigningMaterial, WithoutTheTrustCheckAnyCertificateWillDo) {
    for (const std::string kind :
         {"foreign", "expired", "revoked", "expired-revoked", "other-name", "mod", "good"}) {
        ExpectLoaded({FilesOf(kind), 0, ""}, TrustCheck::Skipped);
    }
}

TEST(SigningMaterial, WithoutTheTrustCheckACertificateMustParse) {
    for (const std::string name : {"pem.cer", "truncated.cer", "empty.cer"}) {
        const std::string path = CredentialPath("damaged", name);
        ExpectLoaded({{PrivateKeyPath("good"), path, ""},
                      27,
                      "[Err!] Error parsing certificate file '" + path + "'.\n"},
                     TrustCheck::Skipped);
    }
}

}  // namespace
}  // namespace sealkeeper
