// Hashes files one after the other and reads ahead in those that follow: small files keep all
// streams busy, too, and the disk brings what comes next while the processor hashes.
#ifndef SEALKEEPER_CATALOGUE_HASHING_FILE_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_FILE_HASHER_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include "catalogue/hashing/chunk_hasher.h"
#include "catalogue/hashing/chunked_file_reader.h"
#include "catalogue/hashing/read_ahead_policy.h"

namespace sealkeeper {

struct FileToHash {
    // Open; null when the file cannot be opened or is not to be read, and it then has no chunks.
    std::unique_ptr<ChunkedFileReader> reader;
    // What the open file is; without a reader, what the caller found out otherwise.
    FileStatus status;
    // How many bytes of the file count, and in how many chunks. Those behind the last byte have
    // none.
    std::uint64_t sizeBytes = 0;
    std::uint64_t chunkCount = 0;
};

class FileHasher : private ChunkSource {
  public:
    using OpenFile = std::function<FileToHash(std::size_t index)>;

    // A file that was opened so long before its turn, or less, counts as opened then. More than it
    // takes to hash the small files that are opened ahead of it.
    static constexpr std::chrono::milliseconds kFreshTime{5};

    // `open` is called once for each of `fileCount` files, in order, but some files ahead, as far
    // as that leaves descriptors for the rest of the program; and once more when the turn comes of
    // a file that could not be opened ahead, or has changed since and is not fresh any more. An
    // exception from it, or for lack of memory, comes out of the operations below; the hasher can
    // then only be destroyed.
    FileHasher(std::size_t fileCount, OpenFile open,
               std::unique_ptr<Sha256Streams> streams = MakeSha256Streams());

    // Goes on to the next file, of which there is one, and gives up what is left of the one before,
    // which is then closed. The file stays where it is until the next call.
    const FileToHash& NextFile();

    // The digest of the next chunk of that file; behind the last one, a chunk that was not read.
    [[nodiscard]] HashedChunk NextDigest();

  private:
    using Clock = std::chrono::steady_clock;

    struct FileAhead {
        FileToHash file;
        Clock::time_point openedAt;
        // How many chunks were looked ahead to, how many the streams were given, and how many
        // digests were asked for.
        std::uint64_t seenChunks = 0;
        std::uint64_t givenChunks = 0;
        std::uint64_t takenChunks = 0;
        bool hasUnreadChunk = false;
    };

    static bool IsOutdated(const FileAhead& ahead);

    std::optional<ChunkToHash> NextChunk() override;
    void OnRead(std::chrono::nanoseconds duration) override { advice_.OnRead(duration); }
    void OnUnreadChunk(const ChunkToHash& chunk) override;
    FileAhead* FileToGiveFrom();
    void LookAhead();
    void LookAtNextChunk(FileAhead& ahead);
    void OpenNextFile();
    const FileToHash& OpenCurrentFileAgain();
    void GiveUpCurrentFile();

    std::size_t fileCount_;
    OpenFile open_;
    std::size_t maxOpenFiles_;
    std::size_t openedCount_ = 0;
    // The current file first, then those ahead of it.
    std::deque<FileAhead> files_;
    // The files of which all chunks were given, counted from the current one.
    std::size_t givenFiles_ = 0;
    ReadAheadPolicy advice_;
    // What was looked ahead to and the streams were not given yet.
    std::uint64_t bytesAhead_ = 0;
    std::uint64_t chunksAhead_ = 0;
    bool hasCurrentFile_ = false;
    // Hashes the current file alone when what was read ahead of it does not count.
    std::unique_ptr<FileHasher> again_;
    ChunkHasher chunks_;
};

}  // namespace sealkeeper

#endif
