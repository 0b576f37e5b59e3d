// Memory and system calls that building an entry block needs.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/catalogue_writer.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "catalogue/path_alias.h"
#include "fault/fault_injection.h"
#include "platform/file_system.h"
#include "platform/text_encoding.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

using test::Call;

TEST(CatalogueWriterMemory, HoldsTheCompressedFormAlone) {
    // Missing files, which count as empty.
    const std::vector<FoundFile> files(10'000, {L"/no/such/file", {}});
    EntryBlock block;
    const test::CapturedOutput quiet;
    test::ResetLargestAllocation();
    EXPECT_EQ(BuildEntryBlock(files, {}, MakeChunkHasher(), block), ResultCode::Ok);
    EXPECT_EQ(block.entryCount, files.size());
    EXPECT_LT(test::LargestAllocation(), block.uncompressedBytes * 3 / 4);
}

TEST(CatalogueWriterCalls, WhatTheWalkSawIsNotLookedAtAgain) {
    const test::TempDirectory directory;
    std::vector<FoundFile> files;
    for (const std::string name : {"a", "b", "c"}) {
        const std::string path = directory.WriteFile(name, "hello");
        files.push_back({Utf8ToWide(path), StatusOfPath(path)});
    }
    EntryBlock block;
    const test::CapturedOutput quiet;
    test::ResetCallCount(Call::Stat);
    EXPECT_EQ(BuildEntryBlock(files, {}, MakeChunkHasher(), block), ResultCode::Ok);
    // The first file's turn comes as it is opened.
    EXPECT_EQ(test::CallCount(Call::Stat), 1U);
}

TEST(CatalogueWriterMemory, WithoutAliasesNoPathIsConverted) {
    CatalogueEntry entry;
    // Too long for a string without an allocation.
    entry.path.fill(u'a');
    test::ResetCallCount(Call::Allocation);
    EXPECT_EQ(ApplyPathAlias({}, entry), ResultCode::Ok);
    EXPECT_EQ(test::CallCount(Call::Allocation), 0U);
}

}  // namespace
}  // namespace sealkeeper
