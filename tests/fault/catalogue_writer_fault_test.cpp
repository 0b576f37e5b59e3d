// What building an entry block asks of memory.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/catalogue_writer.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "catalogue/path_alias.h"
#include "fault/fault_injection.h"
#include "support/captured_output.h"

namespace sealkeeper {
namespace {

using test::Call;

TEST(CatalogueWriterMemory, HoldsTheCompressedFormAlone) {
    // Which are not there, and so count as empty.
    const std::vector<FoundFile> files(10'000, {L"/no/such/file", {}});
    EntryBlock block;
    const test::CapturedOutput quiet;
    test::ResetLargestAllocation();
    EXPECT_EQ(BuildEntryBlock(files, {}, MakeChunkHasher(), block), ResultCode::Ok);
    EXPECT_EQ(block.entryCount, files.size());
    EXPECT_LT(test::LargestAllocation(), block.uncompressedBytes * 3 / 4);
}

TEST(CatalogueWriterMemory, WithoutAliasesNoPathIsConverted) {
    CatalogueEntry entry;
    // Too long for what a string holds without an allocation.
    entry.path.fill(u'a');
    test::ResetCallCount(Call::Allocation);
    EXPECT_EQ(ApplyPathAlias({}, entry), ResultCode::Ok);
    EXPECT_EQ(test::CallCount(Call::Allocation), 0U);
}

}  // namespace
}  // namespace sealkeeper
