#include "app/catalogue_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

using Names = std::vector<std::wstring>;

Names Find(const std::string& directory) {
    Names names = {L"from before"};
    EXPECT_EQ(FindCatalogues(directory, names), ResultCode::Ok);
    return names;
}

TEST(CatalogueSearch, FindsNamesByTheirEnd) {
    const TempDirectory directory;
    for (const char* name : {"mod1.bin", "base.bin", "base.cer", "base.BIN", "base.bin.bak",
                             "basebin", ".hidden.bin", ".bin", "sub/deep.bin", "runtime.conf"}) {
        directory.WriteFile(name, "");
    }
    EXPECT_EQ(Find(directory / ""), (Names{L"base.bin", L"mod1.bin"}));
}

TEST(CatalogueSearch, WhatANameStandsForDoesNotCount) {
    const TempDirectory directory;
    fs::create_directory(directory / "dir.bin");
    fs::create_symlink("nowhere", directory / "link.bin");
    EXPECT_EQ(Find(directory / ""), (Names{L"dir.bin", L"link.bin"}));
}

TEST(CatalogueSearch, NamesMayHoldAnything) {
    const TempDirectory directory;
    for (const char* name : {"a\\b.bin", "\xC3\xA4.bin", "[x].bin", "*.bin", "a b.bin"}) {
        directory.WriteFile(name, "");
    }
    Names found = Find(directory / "");
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (Names{L"*.bin", L"[x].bin", L"a b.bin", L"a\\b.bin", L"\u00E4.bin"}));
}

TEST(CatalogueSearch, TheDirectoryIsNoPattern) {
    const TempDirectory directory;
    directory.WriteFile("a/other.bin", "");
    directory.WriteFile("ab/other.bin", "");
    for (const char* name : {"[a]", "*", "?", "a\\b", "[!x]", "[a", "a]"}) {
        directory.WriteFile(std::string(name) + "/own.bin", "");
        EXPECT_EQ(Find(directory / name + "/"), Names{L"own.bin"}) << name;
    }
    EXPECT_EQ(Find(directory / "a?/"), Names{});
}

TEST(CatalogueSearch, NothingWhereThereIsNone) {
    const TempDirectory directory;
    directory.WriteFile("file", "");
    EXPECT_EQ(Find(directory / ""), Names{});
    EXPECT_EQ(Find(directory / "missing/"), Names{});
    EXPECT_EQ(Find(directory / "file/"), Names{});
}

TEST(CatalogueSearch, NameInTheCurrentDirectory) {
    const TempDirectory directory;
    const ScopedCurrentDirectory here(directory.Path());
    directory.WriteFile("base.bin", "");
    EXPECT_EQ(Find(""), Names{L"base.bin"});
}

}  // namespace
}  // namespace sealkeeper
