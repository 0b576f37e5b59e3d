// The files that are open: the one whose turn it is, and those opened ahead of it.
#ifndef SEALKEEPER_CATALOGUE_HASHING_FILE_WINDOW_H
#define SEALKEEPER_CATALOGUE_HASHING_FILE_WINDOW_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include "catalogue/hashing/pending_chunk.h"
#include "platform/file_system.h"
#include "platform/input_file.h"

namespace sealkeeper {

struct FileToHash {
    // Null when the file cannot be opened or is not to be read; it then has no chunks.
    std::shared_ptr<const InputFile> file;
    // What the path named before it was opened.
    FileStatus status;
    // How many bytes of the file count, and in how many chunks. Chunks past the last byte are
    // empty.
    std::uint64_t sizeBytes = 0;
    std::uint64_t chunkCount = 0;
};

// Opens file `index` of those to be hashed. Its status, compared later with that of the open file,
// tells whether it is what was meant.
using OpenFile = std::function<FileToHash(std::size_t index)>;

// Gives the chunks of files in order. The first of its files is the current one.
class FileWindow {
  public:
    // Opens `fileCount` files in order by `open`, at most 64 at a time, and only as many as leave
    // descriptors for the rest of the program.
    FileWindow(std::size_t fileCount, OpenFile open);

    [[nodiscard]] bool IsEmpty() const { return files_.empty(); }

    // Opens the next file, of which there is one.
    void OpenNext();

    // The current file. It stays where it is until `PopCurrent` or `StartOver`.
    [[nodiscard]] const FileToHash& Current() const { return files_.front().file; }

    // How many of its chunks were given.
    [[nodiscard]] std::uint64_t GivenOfCurrent() const { return files_.front().givenChunks; }

    // Lets go of the current file; the one after it is the current one then.
    void PopCurrent() { files_.pop_front(); }

    // Tries once more to open the current file, which could not be opened.
    void RetryCurrent();

    // Lets go of all files and opens the current one anew. It is the only one then.
    void StartOver();

    // The next chunk, of the current file, which there is, or of one ahead, which is opened if need
    // be. Nothing when there is none, or no room for more files.
    [[nodiscard]] std::optional<ChunkToHash> NextChunk();

    // The length of the chunk that was given last; 0 when none was.
    [[nodiscard]] std::size_t LastGivenBytes() const { return lastGivenBytes_; }

  private:
    struct OpenedFile {
        FileToHash file;
        std::uint64_t givenChunks = 0;
    };

    [[nodiscard]] std::size_t CurrentIndex() const { return openedCount_ - files_.size(); }

    std::size_t fileCount_;
    OpenFile open_;
    std::size_t maxFiles_;
    std::size_t openedCount_ = 0;
    std::size_t lastGivenBytes_ = 0;
    std::deque<OpenedFile> files_;
};

}  // namespace sealkeeper

#endif
