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
    // The status of the path when the file was opened, or an earlier one; see `OpenFile`.
    FileStatus status;
    // Bytes and chunks to hash. Chunks past the end are empty.
    std::uint64_t sizeBytes = 0;
    std::uint64_t chunkCount = 0;
};

// Opens file `index` of the files to be hashed. The status in the result is later compared with
// that of the open file, to detect changes. For a file ahead of its turn it may be an earlier
// status, since it is compared at the file's turn. For the current file it must be asked for, also
// when that file is opened again.
using OpenFile = std::function<FileToHash(std::size_t index)>;

// Gives the chunks of the files in order. The first of the open files is the current one.
class FileWindow {
  public:
    // Opens `fileCount` files in order with `open`, at most 64 at a time, and leaves some
    // descriptors for the rest of the program.
    FileWindow(std::size_t fileCount, OpenFile open);

    [[nodiscard]] bool IsEmpty() const { return files_.empty(); }

    // Opens the next file. Fewer than `fileCount` must have been opened.
    void OpenNext();

    // The current file. The reference is valid until `PopCurrent` or `StartOver`.
    [[nodiscard]] const FileToHash& Current() const { return files_.front().file; }

    // How many chunks of the current file were given.
    [[nodiscard]] std::uint64_t GivenOfCurrent() const { return files_.front().givenChunks; }

    // Closes the current file; the next one becomes the current one.
    void PopCurrent() { files_.pop_front(); }

    // Tries once more to open the current file, which could not be opened.
    void RetryCurrent();

    // Closes all files and opens the current one again, alone.
    void StartOver();

    // The next chunk, of the current file or of a later one, which is opened if necessary. There
    // must be a current file. Nothing when there are no more chunks or no more files may be open.
    [[nodiscard]] std::optional<ChunkToHash> NextChunk();

    // The length in bytes of the last chunk given; 0 when none was.
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
