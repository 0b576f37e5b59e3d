#include "platform/directory_listing.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::TempDirectory;

using Listed = std::vector<std::pair<std::string, EntryType>>;

Listed List(const std::string& directory) {
    Listed listed;
    const auto entries = ListDirectory(directory);
    EXPECT_TRUE(entries.has_value()) << directory;
    for (const DirectoryEntry& entry : entries.value_or(std::vector<DirectoryEntry>())) {
        listed.emplace_back(entry.name, entry.type);
    }
    return listed;
}

TEST(DirectoryListing, EmptyDirectoryHoldsItsDots) {
    const TempDirectory directory;
    EXPECT_EQ(List(directory.Path() + "/"),
              (Listed{{".", EntryType::Directory}, {"..", EntryType::Directory}}));
}

TEST(DirectoryListing, NamesInByteOrderWithTheirOwnTypes) {
    const TempDirectory directory;
    for (const char* name : {"b", "C", "a.b", "a-b", ".hidden", "_", "dir/inner"}) {
        directory.WriteFile(name, "");
    }
    fs::create_symlink("b", directory / "link_file");
    fs::create_directory_symlink("dir", directory / "link_dir");
    fs::create_symlink("nowhere", directory / "link_dangling");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(List(directory.Path() + "/"), (Listed{{".", EntryType::Directory},
                                                    {"..", EntryType::Directory},
                                                    {".hidden", EntryType::Regular},
                                                    {"C", EntryType::Regular},
                                                    {"_", EntryType::Regular},
                                                    {"a-b", EntryType::Regular},
                                                    {"a.b", EntryType::Regular},
                                                    {"b", EntryType::Regular},
                                                    {"dir", EntryType::Directory},
                                                    {"fifo", EntryType::Other},
                                                    {"link_dangling", EntryType::Other},
                                                    {"link_dir", EntryType::Other},
                                                    {"link_file", EntryType::Other}}));
    EXPECT_EQ(List(directory / "link_dir/"), (Listed{{".", EntryType::Directory},
                                                     {"..", EntryType::Directory},
                                                     {"inner", EntryType::Regular}}));
}

TEST(DirectoryListing, NothingWhereThereIsNoDirectory) {
    const TempDirectory directory;
    directory.WriteFile("file", "");
    EXPECT_FALSE(ListDirectory(directory / "missing/").has_value());
    EXPECT_FALSE(ListDirectory(directory / "file/").has_value());
    EXPECT_FALSE(ListDirectory("").has_value());
}

TEST(DirectoryListing, ReadsTheSameEntriesInTheOrderOfTheSystem) {
    const TempDirectory directory;
    for (const char* name : {"b", "C", ".hidden", "dir/inner"}) {
        directory.WriteFile(name, "");
    }
    fs::create_directory_symlink("dir", directory / "link_dir");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    const auto entries = ReadDirectory(directory / "");
    ASSERT_TRUE(entries.has_value());
    Listed read;
    DIR* stream = opendir(directory.Path().c_str());
    ASSERT_NE(stream, nullptr);
    for (const DirectoryEntry& entry : *entries) {
        read.emplace_back(entry.name, entry.type);
        const dirent* next = readdir(stream);
        ASSERT_NE(next, nullptr);
        EXPECT_EQ(entry.name, next->d_name);
    }
    EXPECT_EQ(readdir(stream), nullptr);
    closedir(stream);
    std::sort(read.begin(), read.end());
    EXPECT_EQ(read, List(directory / ""));
}

TEST(DirectoryListing, ReadsNothingWhereThereIsNoDirectory) {
    const TempDirectory directory;
    directory.WriteFile("file", "");
    EXPECT_FALSE(ReadDirectory(directory / "missing/").has_value());
    EXPECT_FALSE(ReadDirectory(directory / "file/").has_value());
    EXPECT_FALSE(ReadDirectory("").has_value());
}

TEST(DirectoryListing, LinkStatusOfEachType) {
    const TempDirectory directory;
    directory.WriteFile("file", "");
    fs::create_directory(directory / "dir");
    fs::create_symlink("file", directory / "link_file");
    fs::create_directory_symlink("dir", directory / "link_dir");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(LinkStatusType(directory / "file"), EntryType::Regular);
    EXPECT_EQ(LinkStatusType(directory / "dir"), EntryType::Directory);
    EXPECT_EQ(LinkStatusType(directory / "link_file"), EntryType::Other);
    EXPECT_EQ(LinkStatusType(directory / "link_dir"), EntryType::Other);
    EXPECT_EQ(LinkStatusType(directory / "fifo"), EntryType::Other);
    EXPECT_EQ(LinkStatusType(directory / "missing"), EntryType::Other);
    EXPECT_EQ(LinkStatusType(""), EntryType::Other);
}

}  // namespace
}  // namespace sealkeeper
