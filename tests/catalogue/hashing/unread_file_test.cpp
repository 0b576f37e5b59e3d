#include "catalogue/hashing/unread_file.h"

#include <gtest/gtest.h>

#include <memory>

#include "catalogue/hashing/game_file.h"
#include "platform/text_encoding.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

class UnreadFileTest : public testing::Test {
  protected:
    [[nodiscard]] std::shared_ptr<const InputFile> OpenFile(const char* name) const {
        return OpenGameFile(Utf8ToWide(directory_.WriteFile(name, "content"))).file;
    }

    test::TempDirectory directory_;
    std::shared_ptr<const InputFile> file_ = OpenFile("file");
    std::shared_ptr<const InputFile> other_ = OpenFile("other");
    UnreadFile unread_;
};

TEST_F(UnreadFileTest, NothingIsHeldBackAtFirst) {
    EXPECT_FALSE(unread_.HoldsBack({file_, 0, 1}));
}

TEST_F(UnreadFileTest, HoldsBackTheFileOfTheLastUnreadChunk) {
    unread_.Note(PendingChunk({file_, 0, 1}));
    EXPECT_TRUE(unread_.HoldsBack({file_, 5, 1}));
    EXPECT_FALSE(unread_.HoldsBack({other_, 0, 1}));
    unread_.Note(PendingChunk({other_, 0, 1}));
    EXPECT_FALSE(unread_.HoldsBack({file_, 5, 1}));
    EXPECT_TRUE(unread_.HoldsBack({other_, 0, 1}));
}

TEST_F(UnreadFileTest, ChunkThatWasReadHoldsNothingBack) {
    PendingChunk chunk({file_, 0, 1});
    chunk.result.isRead = true;
    unread_.Note(chunk);
    EXPECT_FALSE(unread_.HoldsBack({file_, 5, 1}));
}

TEST_F(UnreadFileTest, DroppedChunkHoldsNothingBack) {
    PendingChunk chunk({file_, 0, 1});
    chunk.isDropped = true;
    unread_.Note(chunk);
    EXPECT_FALSE(unread_.HoldsBack({file_, 5, 1}));
}

}  // namespace
}  // namespace sealkeeper
