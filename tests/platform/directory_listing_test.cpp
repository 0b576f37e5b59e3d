#include "platform/directory_listing.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::TempDirectory;

std::optional<DirectoryEntries> Listing(const std::string& directory) {
    std::optional<DirectoryEntries> entries;
    EXPECT_EQ(ListDirectory(directory, entries), ResultCode::Ok);
    return entries;
}

std::optional<DirectoryEntries> Reading(const std::string& directory) {
    std::optional<DirectoryEntries> entries;
    EXPECT_EQ(ReadDirectory(directory, entries), ResultCode::Ok);
    return entries;
}

EntryType TypeAt(const std::string& path) {
    EntryType type = EntryType::Other;
    EXPECT_EQ(LinkStatusType(path, type), ResultCode::Ok);
    return type;
}

using Listed = std::vector<std::pair<std::string, EntryType>>;

Listed List(const std::string& directory) {
    Listed listed;
    const auto entries = Listing(directory);
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
                                                    {"link_dangling", EntryType::Link},
                                                    {"link_dir", EntryType::Link},
                                                    {"link_file", EntryType::Link}}));
    EXPECT_EQ(List(directory / "link_dir/"), (Listed{{".", EntryType::Directory},
                                                     {"..", EntryType::Directory},
                                                     {"inner", EntryType::Regular}}));
}

TEST(DirectoryListing, NothingWhereThereIsNoDirectory) {
    const TempDirectory directory;
    directory.WriteFile("file", "");
    EXPECT_FALSE(Listing(directory / "missing/").has_value());
    EXPECT_FALSE(Listing(directory / "file/").has_value());
    EXPECT_FALSE(Listing("").has_value());
}

TEST(DirectoryListing, ReadsTheSameEntriesInTheOrderOfTheSystem) {
    const TempDirectory directory;
    for (const char* name : {"b", "C", ".hidden", "dir/inner"}) {
        directory.WriteFile(name, "");
    }
    fs::create_directory_symlink("dir", directory / "link_dir");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    const auto entries = Reading(directory / "");
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
    EXPECT_FALSE(Reading(directory / "missing/").has_value());
    EXPECT_FALSE(Reading(directory / "file/").has_value());
    EXPECT_FALSE(Reading("").has_value());
}

TEST(DirectoryListing, LinkStatusOfEachType) {
    const TempDirectory directory;
    directory.WriteFile("file", "");
    fs::create_directory(directory / "dir");
    fs::create_symlink("file", directory / "link_file");
    fs::create_directory_symlink("dir", directory / "link_dir");
    ASSERT_EQ(mkfifo((directory / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(TypeAt(directory / "file"), EntryType::Regular);
    EXPECT_EQ(TypeAt(directory / "dir"), EntryType::Directory);
    EXPECT_EQ(TypeAt(directory / "link_file"), EntryType::Link);
    EXPECT_EQ(TypeAt(directory / "link_dir"), EntryType::Link);
    EXPECT_EQ(TypeAt(directory / "fifo"), EntryType::Other);
    EXPECT_EQ(TypeAt(directory / "missing"), EntryType::Other);
    EXPECT_EQ(TypeAt(""), EntryType::Other);
}

}  // namespace
}  // namespace sealkeeper
