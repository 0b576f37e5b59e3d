#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "app/list_action.h"
#include "catalogue/stored_catalogue_support.h"
#include "fault/fault_injection.h"
#include "support/list_fixture.h"

namespace sealkeeper {
namespace {

using test::Call;
using test::ScopedFault;
using Reach = ScopedFault::Reach;

class ListFaults : public test::ListFixture {
  protected:
    std::string CataloguePath() {
        return directory_.WriteFile(
            "base.bin", test::TextOfBytes(test::CatalogueOf(test::RecordOfFile(u"a", "hello"), 1)));
    }
    // A file that may be a runtime.conf, but is none.
    std::string SettingsPath() {
        return directory_.WriteFile("runtime.conf", std::string(1108, 'x'));
    }
    static std::string Unread(const std::string& path) {
        return "[Err!] Could not locate the file on disk: '" + path + "'.\n";
    }
};

TEST_F(ListFaults, FileIsOpenedOnce) {
    const std::string catalogue = CataloguePath();
    const std::string settings = SettingsPath();
    {
        const ScopedFault fault(Call::Open, 1);
        EXPECT_EQ(List(catalogue), ResultCode::Ok);
        EXPECT_EQ(output_, "[Info] 1 files in catalogue:\n[Info] a\n");
    }
    const ScopedFault fault(Call::Open, 1);
    EXPECT_EQ(List(settings), ResultCode::FileInvalid);
    EXPECT_EQ(output_, "[Err!] Unsupported file format.\n");
}

struct OpeningFault {
    const char* name;
    Call call;
    std::size_t firstFailing;
};

TEST_F(ListFaults, StartThatCannotBeRead) {
    const std::vector<OpeningFault> faults = {
        {"open", Call::Open, 0},
        {"fdopen", Call::Fdopen, 0},
        {"seek to the end", Call::Fseeko, 0},
        {"seek to the start", Call::Fseeko, 1},
        {"read", Call::Fread, 0},
    };
    for (const std::string& path : {CataloguePath(), SettingsPath()}) {
        for (const OpeningFault& failing : faults) {
            const ScopedFault fault(failing.call, failing.firstFailing, Reach::Once);
            EXPECT_EQ(List(path), ResultCode::CatalogueIOError) << failing.name;
            EXPECT_EQ(output_, Unread(path)) << failing.name;
        }
    }
}

TEST_F(ListFaults, RestThatCannotBeRead) {
    const std::string catalogue = CataloguePath();
    const std::string settings = SettingsPath();
    {
        const ScopedFault fault(Call::Fread, 1, Reach::Once);
        EXPECT_EQ(List(catalogue), ResultCode::CatalogueIOError);
        EXPECT_EQ(output_,
                  "[Warn] GetUnverifiedCatalogueFileList() failed. Code 8 (CatalogueIOError).\n");
    }
    const ScopedFault fault(Call::Fread, 1, Reach::Once);
    EXPECT_EQ(List(settings), ResultCode::CatalogueIOError);
    EXPECT_EQ(output_, Unread(settings));
}

}  // namespace
}  // namespace sealkeeper
