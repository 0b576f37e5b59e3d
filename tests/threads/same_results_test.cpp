// Whatever hashes, in however many threads: the entry block, the verdicts and the console output
// are the same.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/catalogue_test_support.h"
#include "catalogue/catalogue_writer.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/stored_catalogue_support.h"
#include "catalogue/stored_entry.h"
#include "platform/text_encoding.h"
#include "support/captured_output.h"
#include "support/found_files.h"
#include "support/temp_directory.h"
#include "threads/hashing_variants.h"

namespace sealkeeper {
namespace {

using test::CapturedOutput;
using test::PatternText;
using test::ScopedCurrentDirectory;
using test::TempDirectory;

struct Outcome {
    ResultCode code;
    std::vector<std::uint8_t> block;
    std::string output;

    bool operator==(const Outcome&) const = default;
};

struct NamedContent {
    std::string name;
    std::string content;
};

// Most have one chunk, one has several, some are empty. Made once, since the sanitizers make that
// slow.
const std::vector<NamedContent>& Contents() {
    static const std::vector<NamedContent> contents = [] {
        std::vector<NamedContent> made;
        const auto add = [&made](const std::string& name, std::size_t sizeBytes) {
            made.push_back({name, PatternText(sizeBytes + made.size()).substr(made.size())});
        };
        for (std::size_t i = 0; i < 150; ++i) {
            add("small" + std::to_string(i), i * 7919 % 40'000 * (i % 10 == 0 ? 0 : 1));
        }
        add("chunk", kChunkBytes);
        add("chunks", 2 * kChunkBytes + 1);
        return made;
    }();
    return contents;
}

const std::vector<std::shared_ptr<const StoredEntry>>& Entries() {
    static const std::vector<std::shared_ptr<const StoredEntry>> entries = [] {
        std::vector<std::shared_ptr<const StoredEntry>> made;
        for (const NamedContent& file : Contents()) {
            made.push_back(test::EntryOf(test::RecordOfFile(u"a", file.content)));
        }
        return made;
    }();
    return entries;
}

// The files, in a fresh current directory.
class SameResultsJobs : public testing::TestWithParam<test::HashingVariant> {
  protected:
    SameResultsJobs() : here_(directory_.Path()) {
        for (const NamedContent& file : Contents()) {
            directory_.WriteFile(file.name, file.content);
            files_.push_back(Utf8ToWide(file.name));
        }
    }

    [[nodiscard]] Outcome Build(std::unique_ptr<ChunkHasher> hasher) const {
        CapturedOutput output;
        EntryBlock block;
        const ResultCode code = BuildEntryBlock(test::Unseen(files_), {}, std::move(hasher), block);
        return {code, block.compressed, test::WithoutProgressDots(output.Take())};
    }

    // The codes of all files, checked against the entries that were written.
    [[nodiscard]] std::vector<ResultCode> Verify(std::unique_ptr<ChunkHasher> chunks) const {
        const CapturedOutput quiet;
        const auto& entries = Entries();
        FileHasher hasher(
            entries.size(),
            [&](std::size_t index) { return entries[index]->OpenFile(files_[index]); },
            std::move(chunks));
        std::vector<ResultCode> codes;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            codes.push_back(entries[i]->VerifyNextFile(files_[i], hasher, nullptr, nullptr));
        }
        return codes;
    }

    TempDirectory directory_;
    ScopedCurrentDirectory here_;
    std::vector<std::wstring> files_;
};

TEST_P(SameResultsJobs, OfSoundFiles) {
    const Outcome expected = Build(MakeChunkHasher());
    EXPECT_EQ(expected.code, ResultCode::Ok);
    EXPECT_EQ(Build(GetParam().MakeHasher()), expected);
    EXPECT_EQ(Verify(GetParam().MakeHasher()),
              std::vector<ResultCode>(files_.size(), ResultCode::Ok));
}

TEST_P(SameResultsJobs, OfDamagedFiles) {
    directory_.WriteFile("small33", "another");
    directory_.WriteFile("small77", std::string(Contents()[77].content.size(), 'x'));
    std::filesystem::remove("small99");
    std::string changed = Contents()[151].content;
    changed[kChunkBytes] ^= 1;
    directory_.WriteFile("chunks", changed);
    const std::vector<ResultCode> codes = Verify(GetParam().MakeHasher());
    for (std::size_t i = 0; i < codes.size(); ++i) {
        const ResultCode expected = i == 33    ? ResultCode::FileVerificationSizeMismatch
                                    : i == 77  ? ResultCode::FileVerificationHashMismatch
                                    : i == 99  ? ResultCode::FileVerificationIOError
                                    : i == 151 ? ResultCode::FileVerificationHashMismatch
                                               : ResultCode::Ok;
        EXPECT_EQ(codes[i], expected) << i;
    }
}

// A directory can be opened but not read. The first such file ends the run, with its line
// unfinished.
TEST_P(SameResultsJobs, OfAFileThatCannotBeRead) {
    for (const char* const name : {"small60", "small61"}) {
        std::filesystem::remove(name);
        std::filesystem::create_directory(name);
    }
    const Outcome expected = Build(MakeChunkHasher());
    EXPECT_EQ(expected.code, ResultCode::CatalogueIOError);
    EXPECT_TRUE(expected.output.ends_with("[Info] Hashing small60...")) << expected.output;
    const Outcome outcome = Build(GetParam().MakeHasher());
    EXPECT_EQ(outcome.code, expected.code);
    EXPECT_EQ(outcome.output, expected.output);
}

INSTANTIATE_TEST_SUITE_P(EveryVariant, SameResultsJobs, testing::ValuesIn(test::HashingVariants()),
                         [](const auto& instance) { return instance.param.name; });

}  // namespace
}  // namespace sealkeeper
