// Hashes files one after the other and reads ahead in those that follow, so that small files keep
// all streams busy, too.
#ifndef SEALKEEPER_CATALOGUE_FILE_HASHER_H
#define SEALKEEPER_CATALOGUE_FILE_HASHER_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include "catalogue/chunk_hasher.h"
#include "catalogue/chunked_file_reader.h"

namespace sealkeeper {

struct FileToHash {
    // Open; null when the file cannot be opened or is not to be read.
    std::unique_ptr<ChunkedFileReader> reader;
    // What the open file is; without a reader, what the caller found out otherwise.
    FileStatus status;
    // How many bytes of the file count, and in how many chunks. Those behind the last byte have
    // none.
    std::uint64_t sizeBytes = 0;
    std::uint64_t chunkCount = 0;
};

// The chunks that `sizeBytes` bytes make.
[[nodiscard]] std::uint64_t ChunkCountOf(std::uint64_t sizeBytes);

// Where chunk `index` of a file of `sizeBytes` bytes begins.
[[nodiscard]] std::uint64_t ChunkOffset(std::uint64_t index, std::uint64_t sizeBytes);

class FileHasher : private ChunkSource {
  public:
    using OpenFile = std::function<FileToHash(std::size_t index)>;

    // `open` is called for each of `fileCount` files, in order, but some files ahead; once more for
    // one that could not be opened ahead, when no other is open.
    FileHasher(std::size_t fileCount, OpenFile open);

    // Goes on to the next file, of which there is one, and gives up what is left of the one before.
    FileToHash& NextFile();

    // The digest of the next chunk of that file, of which there is one.
    [[nodiscard]] HashedChunk NextDigest();

  private:
    struct FileAhead {
        FileToHash file;
        // How many chunks the streams were given, and how many digests were asked for.
        std::uint64_t givenChunks = 0;
        std::uint64_t takenChunks = 0;
    };

    std::optional<ChunkToHash> NextChunk() override;
    void OpenNextFile();
    // False when the file cannot be opened beside those that are open.
    bool OpenFileAhead();
    void GiveUpCurrentFile();

    std::size_t fileCount_;
    OpenFile open_;
    std::size_t openedCount_ = 0;
    bool isAheadBlocked_ = false;
    // The current file first, then those ahead of it. Chunks are given from the last one.
    std::deque<FileAhead> files_;
    bool hasCurrentFile_ = false;
    ChunkHasher chunks_;
};

}  // namespace sealkeeper

#endif
