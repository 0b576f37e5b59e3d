#include "config/file_collector.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/captured_output.h"
#include "support/found_files.h"
#include "support/temp_directory.h"

namespace sealkeeper {
namespace {

namespace fs = std::filesystem;
using test::CapturedOutput;
using test::ScopedCurrentDirectory;
using test::ScopedLogThreshold;
using test::TempDirectory;

using Files = std::vector<std::wstring>;
using test::PathsOf;

std::string Walked(const std::string& directory) {
    return "[Verb] RecursePath '" + directory + "*.*'.\n";
}

std::string SkippedPath(const std::string& path) {
    return "[Verb] Skipping path by rule exclude_paths: '" + path + "'.\n";
}

std::string SkippedBySize(const std::string& path) {
    return "[Verb] Skipping file by rule exclude_size_threshold: '" + path + "'.\n";
}

std::string SkippedByExtension(const std::string& path) {
    return "[Verb] Skipping file by rule exclude_extensions: '" + path + "'.\n";
}

// "extensions" and the missing colon are deliberate.
std::string SkippedWithoutExtension(const std::string& path) {
    return "[Verb] Skipping file by rule ignore_files_without_extensions '" + path + "'.\n";
}

// A collector in a game directory, which is the current directory.
class FileCollectorTest : public ::testing::Test {
  protected:
    void Write(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            static_cast<void>(game_.WriteFile(name, "content"));
        }
    }

    void Apply(const std::string& rules) {
        ConfigDocument document;
        ASSERT_TRUE(document.ParseConfigText("s {" + rules + "\n}\n"));
        std::string name = "s";
        CapturedOutput output;
        ASSERT_EQ(collector_.ApplyCatalogueRules(document.GetSection(name)), ResultCode::Ok);
    }

    bool Resolve() {
        CapturedOutput output;
        const bool resolved = collector_.ResolvePaths() == ResultCode::Ok;
        resolveOutput_ = output.Take();
        return resolved;
    }

    // Collects with the trace on, and by default with the arguments of the generate action.
    Files Collect(const std::string& start = kWholeDirectory,
                  const std::string& pattern = kEveryFilePattern) {
        const ScopedLogThreshold trace(LogLevel::Trace);
        std::vector<FoundFile> files;
        CapturedOutput output;
        EXPECT_EQ(collector_.CollectFiles(start, pattern, files), ResultCode::Ok);
        output_ = output.Take();
        return PathsOf(files);
    }

    // The files that a walk over the game finds with these rules.
    std::vector<FoundFile> FindBy(const std::string& rules) {
        Apply(rules);
        std::vector<FoundFile> files;
        const CapturedOutput quiet;
        EXPECT_EQ(collector_.CollectFiles(kWholeDirectory, kEveryFilePattern, files),
                  ResultCode::Ok);
        return files;
    }

    // Applies the rules, resolves them and collects.
    Files CollectBy(const std::string& rules) {
        Apply(rules);
        EXPECT_TRUE(Resolve());
        return Collect();
    }

    TempDirectory game_;
    ScopedCurrentDirectory inGame_{game_.Path()};
    FileCollector collector_{"/the/game/"};
    std::string resolveOutput_;
    std::string output_;
};

TEST_F(FileCollectorTest, KeepsItsBasePath) {
    EXPECT_EQ(collector_.BasePath(), "/the/game/");
}

TEST_F(FileCollectorTest, WalksInReverseOrderOfNames) {
    Write({"a", "B", "b/c", "b/a", "b/b/x", "z.z", "A.b"});
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"),
              (Files{L"./z.z", L"./b/c", L"./b/b/x", L"./b/a", L"./a", L"./B", L"./A.b"}));
    EXPECT_EQ(output_, Walked("./") + Walked("./b/") + Walked("./b/b/"));
}

TEST_F(FileCollectorTest, TracesWhatItFindsAndByWhichRuleItPassesOverTheRest) {
    Write({"a.txt", "b.pdb", "big.dat", "bare", ".hidden", ".dir/x", "out/y", "\xFF.dat"});
    fs::create_symlink("a.txt", game_ / "link");
    fs::resize_file(game_ / "big.dat", 11'000'000);
    Apply(
        "exclude_paths=[\"out\"] exclude_extensions=[\".pdb\"] exclude_size_threshold=10; "
        "ignore_files_without_extension=true ");
    ASSERT_TRUE(Resolve());
    std::vector<FoundFile> files;
    CollectionTrace trace;
    EXPECT_EQ(collector_.CollectFilesTraced(kWholeDirectory, kEveryFilePattern, files, trace),
              ResultCode::Ok);
    EXPECT_EQ(trace.paths, (std::vector<std::string>{"./\xFF.dat", "./a.txt"}));
    EXPECT_EQ(files.size(), 2U);
    const std::vector<std::pair<std::string, SkipRule>> expected = {
        {"./out", SkipRule::ExcludedPath},        {"./link", SkipRule::OtherType},
        {"./big.dat", SkipRule::SizeThreshold},   {"./bare", SkipRule::NoExtension},
        {"./b.pdb", SkipRule::ExcludedExtension}, {"./.hidden", SkipRule::HiddenName},
        {"./.dir", SkipRule::HiddenName}};
    std::vector<std::pair<std::string, SkipRule>> skipped;
    for (const auto& path : trace.skipped) {
        skipped.emplace_back(path.path, path.rule);
    }
    EXPECT_EQ(skipped, expected);
}

TEST_F(FileCollectorTest, TracesADirectoryThatCannotBeRead) {
    Apply("exclude_paths=[ ]");
    std::vector<FoundFile> files;
    CollectionTrace trace;
    const CapturedOutput quiet;
    EXPECT_EQ(collector_.CollectFilesTraced("./nowhere", kEveryFilePattern, files, trace),
              ResultCode::Ok);
    ASSERT_EQ(trace.skipped.size(), 1U);
    EXPECT_EQ(trace.skipped[0].path, "./nowhere");
    EXPECT_EQ(trace.skipped[0].rule, SkipRule::Unlistable);
}

// Pretends that a directory exists.
class TreeWithNova : public FileTree {
  public:
    ResultCode ReadDirectory(const std::string& directory,
                             std::optional<DirectoryEntries>& entries) const override {
        const ResultCode code = FileTree::ReadDirectory(directory, entries);
        if (directory == ".") {
            entries->push_back({"nova", EntryType::Directory});
        } else if (directory == "./nova/") {
            entries = {{"star", EntryType::Regular}};
        }
        return code;
    }

    ResultCode LookAtPath(const std::string& path, FileStatus& status) const override {
        if (path == "./nova") {
            status = {FileType::Directory};
            return ResultCode::Ok;
        }
        return FileTree::LookAtPath(path, status);
    }
};

TEST(FileCollectorTree, LooksInTheTreeThatItIsGiven) {
    const TempDirectory game;
    const ScopedCurrentDirectory inGame(game.Path());
    const TreeWithNova tree;
    FileCollector collector("/the/game/", tree);
    ConfigDocument document;
    ASSERT_TRUE(document.ParseConfigText("s { include_paths = [\"n*\"] }\n"));
    std::string name = "s";
    const CapturedOutput quiet;
    ASSERT_EQ(collector.ApplyCatalogueRules(document.GetSection(name)), ResultCode::Ok);
    ASSERT_EQ(collector.ResolvePaths(), ResultCode::Ok);
    std::vector<FoundFile> files;
    EXPECT_EQ(collector.CollectFiles(kWholeDirectory, kEveryFilePattern, files), ResultCode::Ok);
    EXPECT_EQ(PathsOf(files), Files{L"./nova/star"});
}

TEST_F(FileCollectorTest, EmptyDirectories) {
    fs::create_directories(game_ / "a/b");
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), Files{});
    EXPECT_EQ(output_, Walked("./") + Walked("./a/") + Walked("./a/b/"));
}

TEST_F(FileCollectorTest, AppendsToTheList) {
    Write({"a"});
    Apply("exclude_paths=[ ]");
    std::vector<FoundFile> files = {{L"earlier", {}}};
    EXPECT_EQ(collector_.CollectFiles("./", "*.*", files), ResultCode::Ok);
    EXPECT_EQ(PathsOf(files), (Files{L"earlier", L"./a"}));
}

TEST_F(FileCollectorTest, TellsWhatItSawOfAFile) {
    Write({"a"});
    const std::vector<FoundFile> files = FindBy("exclude_paths=[ ]");
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].status, StatusOfPath("a"));
}

TEST_F(FileCollectorTest, LooksAtNoFileWhereNoSizeMatters) {
    Write({"a"});
    const std::vector<FoundFile> files = FindBy("exclude_paths=[ ] exclude_size_threshold=0;");
    ASSERT_EQ(files.size(), 1U);
    EXPECT_EQ(files[0].status, FileStatus{});
}

TEST_F(FileCollectorTest, HiddenEntriesAreNeverWalked) {
    Write({".hidden", ".git/config", "a/.hidden", "a/b.", "..x", "c"});
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), (Files{L"./c", L"./a/b."}));
    EXPECT_EQ(output_, Walked("./") + Walked("./a/"));
}

TEST_F(FileCollectorTest, OtherTypesAreIgnored) {
    Write({"a", "dir/x"});
    fs::create_symlink("a", game_ / "link_file");
    fs::create_directory_symlink("dir", game_ / "link_dir");
    fs::create_symlink("nowhere", game_ / "link_dangling");
    fs::create_directory_symlink(".", game_ / "dir/loop");
    ASSERT_EQ(mkfifo("fifo", 0600), 0);
    const int socketDescriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, "socket");
    ASSERT_EQ(bind(socketDescriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(socketDescriptor);
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), (Files{L"./dir/x", L"./a"}));
    EXPECT_EQ(output_, Walked("./") + Walked("./dir/"));
}

TEST_F(FileCollectorTest, ExcludedPaths) {
    Write({"a.txt", "b.txt", "keep/c.txt", "skip/d.txt", "keep/skip/e.txt"});
    EXPECT_EQ(CollectBy("exclude_paths=[\"skip/\", \"?.txt\", \"keep\\\\c.txt\"]"),
              Files{L"./keep/skip/e.txt"});
    EXPECT_EQ(output_, Walked("./") + SkippedPath("./skip") + Walked("./keep/") +
                           Walked("./keep/skip/") + SkippedPath("./keep/c.txt") +
                           SkippedPath("./b.txt") + SkippedPath("./a.txt"));
}

TEST_F(FileCollectorTest, ExcludedPathsAreComparedAsTheyAreFormed) {
    Write({"a", "b/c"});
    EXPECT_EQ(CollectBy("exclude_paths=[\"./a\", \"b//c\"]"), (Files{L"./b/c", L"./a"}));
}

TEST_F(FileCollectorTest, ExtraExcludedPath) {
    Write({"a", "Quorvane/Certificates/base.cer", "Quorvane/Certificates/base.bin"});
    collector_.AddExcludedPath("./Quorvane/Certificates/base.cer");
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), (Files{L"./a", L"./Quorvane/Certificates/base.bin"}));
    EXPECT_EQ(output_, Walked("./") + Walked("./Quorvane/") + Walked("./Quorvane/Certificates/") +
                           SkippedPath("./Quorvane/Certificates/base.cer"));
}

TEST_F(FileCollectorTest, SizeThreshold) {
    Write({"a", "b", "c/d"});
    fs::resize_file(game_ / "a", 10'000'000);
    fs::resize_file(game_ / "b", 10'000'001);
    fs::resize_file(game_ / "c/d", 5'000'000'000);
    EXPECT_EQ(CollectBy("exclude_paths=[ ] exclude_size_threshold=10;"), Files{L"./a"});
    EXPECT_EQ(output_,
              Walked("./") + Walked("./c/") + SkippedBySize("./c/d") + SkippedBySize("./b"));
}

TEST_F(FileCollectorTest, DefaultSizeThreshold) {
    Write({"a", "b"});
    fs::resize_file(game_ / "a", 1'024'000'000);
    fs::resize_file(game_ / "b", 1'024'000'001);
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), Files{L"./a"});
    EXPECT_EQ(output_, Walked("./") + SkippedBySize("./b"));
}

TEST_F(FileCollectorTest, SizeThresholdZeroSkipsNothing) {
    Write({"a"});
    fs::resize_file(game_ / "a", 5'000'000'000);
    EXPECT_EQ(CollectBy("exclude_paths=[ ] exclude_size_threshold=0;"), Files{L"./a"});
    EXPECT_EQ(output_, Walked("./"));
}

TEST_F(FileCollectorTest, NegativeSizeThresholdSkipsEverything) {
    Write({"a", "b/c"});
    fs::create_symlink("nowhere", game_ / "link");
    std::ofstream(game_ / "empty").close();
    EXPECT_EQ(CollectBy("exclude_paths=[ ] exclude_size_threshold=3000000000;"), Files{});
    EXPECT_EQ(output_, Walked("./") + SkippedBySize("./link") + SkippedBySize("./empty") +
                           SkippedBySize("./b") + SkippedBySize("./a"));
}

TEST_F(FileCollectorTest, ExcludedExtensions) {
    Write({"a.pdb", "b.PDB", "c.log", "d.tar.pdb", "e.pdb.tar", "f.pdb.", "pdb", "g.pdbx",
           "dir.pdb/x.log", "dir.pdb/.pdb"});
    EXPECT_EQ(CollectBy("exclude_paths=[ ] exclude_extensions=[\".pdb\",\".LOG\",\"log\",\".\"]"),
              (Files{L"./pdb", L"./g.pdbx", L"./f.pdb.", L"./e.pdb.tar", L"./dir.pdb/x.log",
                     L"./c.log", L"./b.PDB"}));
    EXPECT_EQ(output_, Walked("./") + Walked("./dir.pdb/") + SkippedByExtension("./d.tar.pdb") +
                           SkippedByExtension("./a.pdb"));
}

TEST_F(FileCollectorTest, FilesWithoutExtension) {
    Write({"archive.", "program", "a.b", "a.b.", "dir/program", "dots.."});
    EXPECT_EQ(CollectBy("exclude_paths=[ ] ignore_files_without_extension=true"), Files{L"./a.b"});
    EXPECT_EQ(output_, Walked("./") + SkippedWithoutExtension("./program") +
                           SkippedWithoutExtension("./dots..") + Walked("./dir/") +
                           SkippedWithoutExtension("./dir/program") +
                           SkippedWithoutExtension("./archive.") +
                           SkippedWithoutExtension("./a.b."));
}

TEST_F(FileCollectorTest, RulesInOrder) {
    Write({"a.pdb", "b.pdb"});
    fs::resize_file(game_ / "a.pdb", 20'000'000);
    fs::resize_file(game_ / "b.pdb", 20'000'000);
    EXPECT_EQ(CollectBy("exclude_paths=[\"b.pdb\"] exclude_extensions=[\".pdb\"] "
                        "exclude_size_threshold=10;"),
              Files{});
    EXPECT_EQ(output_, Walked("./") + SkippedPath("./b.pdb") + SkippedBySize("./a.pdb"));
}

TEST_F(FileCollectorTest, StartPathAndPatternInExcludeMode) {
    Write({"a", "sub/b", "sub/c/d"});
    Apply("exclude_paths=[ ]");
    EXPECT_EQ(Collect("./sub", "pattern"), (Files{L"./sub/c/d", L"./sub/b"}));
    EXPECT_EQ(output_,
              "[Verb] RecursePath './sub/pattern'.\n[Verb] RecursePath './sub/c/pattern'.\n");
}

TEST_F(FileCollectorTest, AnEmptyPatternMakesTheStartPathOneNamedDirectly) {
    Write({"sub/b.log", "file.log"});
    Apply(R"(exclude_paths=[ ] exclude_extensions=[".log"])");
    EXPECT_EQ(Collect("./file.log", ""), Files{L"./file.log"});
    EXPECT_EQ(Collect("./sub", ""), Files{});
    EXPECT_EQ(Collect("./none", ""), Files{});
    EXPECT_EQ(output_, "[Err!] The following path couldn't be opened: './none'. (2)");
}

TEST_F(FileCollectorTest, DirectoriesThatCannotBeRead) {
    Write({"file"});
    Apply("exclude_paths=[ ]");
    EXPECT_EQ(Collect("./missing"), Files{});
    EXPECT_EQ(output_, Walked("./missing/") + "[Err!] Unable to open './missing/'.\n");
    EXPECT_EQ(Collect("./file/"), Files{});
    EXPECT_EQ(output_, Walked("./file/") + "[Err!] Unable to open './file/'.\n");
}

TEST_F(FileCollectorTest, UnreadableDirectoryIsLeftOut) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "permissions do not bind the superuser";
    }
    Write({"a", "locked/b", "z"});
    fs::permissions(game_ / "locked", fs::perms::none);
    const Files files = CollectBy("exclude_paths=[ ]");
    fs::permissions(game_ / "locked", fs::perms::owner_all);
    EXPECT_EQ(files, (Files{L"./z", L"./a"}));
    EXPECT_EQ(output_, Walked("./") + Walked("./locked/") + "[Err!] Unable to open './locked/'.\n");
}

TEST_F(FileCollectorTest, ADirectoryNameMayEndInABackslash) {
    Write({"dir\\/a"});
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), Files{L"./dir\\/a"});
}

TEST_F(FileCollectorTest, NameThatIsNoUtf8BecomesTheErrorText) {
    std::ofstream stream(game_ / "a\xFF");
    if (!stream) {
        GTEST_SKIP() << "the file system takes only UTF-8 names";
    }
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), Files{L"U82W_ERROR"});
}

TEST_F(FileCollectorTest, NamesAreWidened) {
    Write({"\xE6\x97\xA5.\xF0\x9F\x98\x80"});
    EXPECT_EQ(CollectBy("exclude_paths=[ ]"), Files{L"./\u65E5.\U0001F600"});
}

}  // namespace
}  // namespace sealkeeper
