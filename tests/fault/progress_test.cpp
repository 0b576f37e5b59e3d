#include "catalogue/progress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "catalogue/catalogue_entry.h"
#include "catalogue/catalogue_test_support.h"
#include "catalogue/stored_catalogue_support.h"
#include "catalogue/stored_entry.h"
#include "support/captured_output.h"
#include "support/fake_clock.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using test::CapturedOutput;
using test::FakeClock;
using test::PatternText;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

constexpr nanoseconds kDotInterval = milliseconds(500);
constexpr nanoseconds kShortest{1};
std::string Tick(bool final) {
    CapturedOutput output;
    ProgressTick(final);
    return output.Take();
}

// Just after a dot, or half a second after the first tick of all, which is now; then the next one
// is due.
class Progress : public testing::Test {
  protected:
    Progress() : here_(directory_.Path()) {
        clock_.Advance(kDotInterval + kShortest);
        static_cast<void>(Tick(false));
    }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    FakeClock clock_;
};

TEST_F(Progress, OneDotAfterHalfASecondAndNoneRightAfterIt) {
    clock_.Advance(kDotInterval + kShortest);
    EXPECT_EQ(Tick(false), ".");
    EXPECT_EQ(Tick(false), "");
    EXPECT_EQ(Tick(true), "\n");
}

TEST_F(Progress, AListenerIsToldInPlaceOfDots) {
    int ticks = 0;
    SendTicksTo([](void* count) { ++*static_cast<int*>(count); }, &ticks);
    clock_.Advance(kDotInterval + kShortest);
    EXPECT_EQ(Tick(false), "");
    EXPECT_EQ(Tick(true), "");
    EXPECT_EQ(ticks, 2);
    SendTicksTo(nullptr, nullptr);
    EXPECT_EQ(Tick(false), ".");
}

TEST_F(Progress, NoDotAtHalfASecondYet) {
    clock_.Advance(kDotInterval);
    EXPECT_EQ(Tick(false), "");
    clock_.Advance(kShortest);
    EXPECT_EQ(Tick(false), ".");
}

TEST_F(Progress, FinalTickMayCarryADotToo) {
    clock_.Advance(kDotInterval + kShortest);
    EXPECT_EQ(Tick(true), ".\n");
}

TEST_F(Progress, HashingTicksAfterEachChunkAndAtItsEnd) {
    const std::string content = PatternText(2 * test::kStoredChunkBytes + 1);
    directory_.WriteFile("a", content);
    std::vector<Sha256Digest> digests;
    CapturedOutput output;
    clock_.AdvanceAtEachReading(kDotInterval + kShortest);
    EXPECT_EQ(HashFileChunks(L"a", content.size(), digests), ResultCode::Ok);
    EXPECT_EQ(output.Take(), "[Info] Hashing a.......\n");
}

bool Accept(const StoredEntry& /*entry*/, std::uint64_t /*positionBytes*/, void* /*context*/) {
    return true;
}

TEST_F(Progress, VerifyingTicksAfterEachChunkThatMatches) {
    const std::string content = PatternText(2 * test::kStoredChunkBytes + 1);
    directory_.WriteFile("a", content);
    const auto entry = test::EntryOf(test::RecordOfFile(u"a", content));
    CapturedOutput output;
    clock_.AdvanceAtEachReading(kDotInterval + kShortest);
    EXPECT_EQ(entry->VerifyCatalogueFile(L"a", nullptr, nullptr), ResultCode::Ok);
    EXPECT_EQ(output.Take(), "...");
}

TEST_F(Progress, VerifyingDoesNotTickAfterAChunkThatIsAcceptedOrNotCompared) {
    const std::string listed = PatternText(test::kStoredChunkBytes + 1);
    directory_.WriteFile("a", "x" + listed.substr(1));
    const auto entry = test::EntryOf(test::RecordOfFile(u"a", listed));
    CapturedOutput output;
    clock_.AdvanceAtEachReading(kDotInterval + kShortest);
    EXPECT_EQ(entry->VerifyCatalogueFile(L"a", Accept, nullptr), ResultCode::Ok);
    EXPECT_EQ(output.Take(), "");
}

}  // namespace
}  // namespace sealkeeper
