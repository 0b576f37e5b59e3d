// Files whose status the system cannot report, unlike missing ones.
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "catalogue/catalogue_entry.h"
#include "fault/fault_injection.h"
#include "platform/file_system.h"
#include "runtime/signing_material.h"
#include "support/captured_output.h"
#include "support/credentials.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::ScopedFault;
using test::TempDirectory;

constexpr auto kOnwards = ScopedFault::Reach::Onwards;
constexpr auto kOnce = ScopedFault::Reach::Once;

class FileStatusFaults : public testing::Test {
  protected:
    FileStatusFaults() : here_(directory_.Path()) { directory_.WriteFile("a", "hello"); }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    CatalogueEntry entry_;
};

TEST_F(FileStatusFaults, OnlyWhatNamesNothingIsMissing) {
    for (const int error : {ENOENT, ENOTDIR, EACCES, EPERM, ELOOP, ENAMETOOLONG}) {
        const ScopedFault fault(Call::StatFailure, 0, kOnwards, error);
        EXPECT_EQ(GetFileType("a"), FileType::Missing) << error;
    }
    for (const int error : {EIO, ENOMEM, EOVERFLOW}) {
        const ScopedFault fault(Call::StatFailure, 0, kOnwards, error);
        EXPECT_EQ(GetFileType("a"), FileType::Unknown) << error;
        EXPECT_EQ(StatusOfPath("a").sizeBytes, 0) << error;
    }
}

TEST_F(FileStatusFaults, AnUnknownFileIsNotSealedAsAnEmptyOne) {
    CapturedOutput output;
    const ScopedFault fault(Call::StatFailure, 0, kOnwards, EIO);
    EXPECT_EQ(BuildCatalogueEntry(L"./a", entry_), ResultCode::CatalogueIOError);
    EXPECT_EQ(output.Take(), "[Err!] [Error] Inaccessible file: './a'.\n");
}

TEST_F(FileStatusFaults, AFileOfANegativeSizeIsNotSealed) {
    CapturedOutput output;
    const ScopedFault fault(Call::Stat, 0, kOnce, -1);
    EXPECT_EQ(BuildCatalogueEntry(L"./a", entry_), ResultCode::CatalogueIOError);
    EXPECT_EQ(output.Take(), "[Err!] [Error] Inaccessible file: './a'.\n");
}

TEST_F(FileStatusFaults, AMissingFileCountsAsEmpty) {
    CapturedOutput output;
    const ScopedFault fault(Call::StatFailure, 0, kOnwards, ENOENT);
    EXPECT_EQ(BuildCatalogueEntry(L"./a", entry_), ResultCode::Ok);
    EXPECT_EQ(output.Take(), "[Warn] [Warning] Empty file: './a'.\n");
    EXPECT_EQ(entry_.fileSizeBytes, 0U);
}

TEST_F(FileStatusFaults, AnUnknownKeyFileIsNotOpened) {
    SigningMaterial material;
    // The key file is checked last.
    test::ResetCallCount(Call::StatFailure);
    const SigningFiles files{test::PrivateKeyPath("good"), test::CertificatePath("good"), ""};
    ASSERT_EQ(LoadSigningMaterial(files, test::kTestProductId, TrustCheck::Required, material),
              ResultCode::Ok);
    const std::size_t looks = test::CallCount(Call::StatFailure);
    ASSERT_GE(looks, 1U);
    CapturedOutput output;
    const ScopedFault fault(Call::StatFailure, looks - 1, kOnce, EIO);
    EXPECT_EQ(LoadSigningMaterial(files, test::kTestProductId, TrustCheck::Required, material),
              ResultCode::MbedTlsFileIOError);
    EXPECT_EQ(output.Take(), "[Err!] Error reading RSA private key file '" +
                                 test::PrivateKeyPath("good") + "' (13).\n");
}

TEST_F(FileStatusFaults, AnOpenFileWhoseStatusIsNotToldIsUnknown) {
    const ScopedFault fault(Call::FstatFailure, 0, kOnce, EIO);
    EXPECT_EQ(StatusOfOpenFile(0), FileStatus{.type = FileType::Unknown});
}

}  // namespace
}  // namespace sealkeeper
