#include "inspect/rules/game_inventory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>

#include "inspect/rules/game_with_outputs.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;

// A game in the current directory.
class GameInventory : public testing::Test {
  protected:
    [[nodiscard]] std::map<std::string, InventoryItem> Inventory() const {
        std::vector<InventoryItem> items = {{"from before", ItemKind::Link}};
        EXPECT_EQ(TakeInventory(game_, items), ResultCode::Ok);
        std::map<std::string, InventoryItem> byPath;
        for (const InventoryItem& item : items) {
            EXPECT_TRUE(byPath.emplace(item.path, item).second) << item.path;
        }
        return byPath;
    }

    test::TempDirectory directory_;
    test::ScopedCurrentDirectory inGame_{directory_.Path()};
    GameWithOutputs game_{directory_.Path()};
};

TEST_F(GameInventory, HasEverythingButDirectoriesThatHoldFiles) {
    directory_.WriteFile("a", "12");
    directory_.WriteFile(".b/c", "123");
    fs::create_directories(directory_ / "empty/deep");
    fs::create_symlink("a", directory_ / "link");
    fs::create_symlink("nowhere", directory_ / "dangling");
    ASSERT_EQ(mkfifo((directory_ / "fifo").c_str(), 0600), 0);
    game_.AddDirectory("x");
    game_.AddFile("x/z", 7);
    const auto items = Inventory();
    ASSERT_EQ(items.size(), 8U);
    EXPECT_EQ(items.at("a").kind, ItemKind::RegularFile);
    EXPECT_EQ(items.at("a").sizeBytes, 2U);
    EXPECT_EQ(items.at(".b/c").sizeBytes, 3U);
    EXPECT_EQ(items.at("link").kind, ItemKind::Link);
    EXPECT_EQ(items.at("link").sizeBytes, 0U);
    EXPECT_EQ(items.at("dangling").kind, ItemKind::DanglingLink);
    EXPECT_EQ(items.at("fifo").kind, ItemKind::SpecialFile);
    EXPECT_EQ(items.at("x/z").sizeBytes, 7U);
    EXPECT_EQ(items.at("empty").kind, ItemKind::DirectoryWithoutFiles);
    EXPECT_EQ(items.at("empty/deep").kind, ItemKind::DirectoryWithoutFiles);
}

TEST_F(GameInventory, HasNothingOfWhatALinkLeadsTo) {
    directory_.WriteFile("d/a", "1");
    fs::create_directory_symlink("d", directory_ / "link");
    const auto items = Inventory();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items.at("d/a").kind, ItemKind::RegularFile);
    EXPECT_EQ(items.at("link").kind, ItemKind::Link);
}

TEST_F(GameInventory, IsEmptyForAnEmptyGame) {
    EXPECT_TRUE(Inventory().empty());
}

TEST_F(GameInventory, HasDirectoriesThatCannotBeRead) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    directory_.WriteFile("closed/a", "1");
    fs::permissions("closed", fs::perms::none);
    const auto items = Inventory();
    fs::permissions("closed", fs::perms::owner_all);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.at("closed").kind, ItemKind::UnlistableDirectory);
}

}  // namespace
}  // namespace sealkeeper
