// Reads one file of the game chunk by chunk through a single buffer. Used to read a chunk again
// when its first reading failed or did not match.
#ifndef SEALKEEPER_CATALOGUE_HASHING_CHUNKED_FILE_READER_H
#define SEALKEEPER_CATALOGUE_HASHING_CHUNKED_FILE_READER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/input_file.h"

namespace sealkeeper {

class ChunkedFileReader {
  public:
    // For a file that `Open` is to open.
    ChunkedFileReader(std::wstring path, std::size_t chunkBytes);
    // For a file that is already open.
    ChunkedFileReader(std::shared_ptr<const InputFile> file, std::size_t chunkBytes);

    // Opens the file at the path as `OpenGameFile` does; call once. `Path` becomes the path in the
    // index if the file was opened there. False when it cannot be opened.
    [[nodiscard]] bool Open();

    [[nodiscard]] const std::wstring& Path() const { return path_; }

    // Sets the expected size of the file and allocates a buffer of that size, or of one chunk if
    // that is less. False when `sizeBytes` is 0 or there already is a buffer. Lack of memory is an
    // exception.
    [[nodiscard]] bool AllocateBuffer(std::uint64_t sizeBytes);

    // Reads the next chunk, which is shorter at the end of the expected size and empty past it.
    // False when the file is not open, ends before the chunk is complete, or cannot be read; then
    // the position is unchanged and there is no chunk.
    [[nodiscard]] bool ReadNextChunk();

    // How many bytes the last `ReadNextChunk` read, even if it failed.
    [[nodiscard]] std::size_t LastReadBytes() const { return lastReadBytes_; }

    // Moves to `positionBytes`, which is at most the expected size. Needs the buffer.
    void SeekTo(std::uint64_t positionBytes);

    // The chunk that the last `ReadNextChunk` read; valid until the next call.
    [[nodiscard]] std::span<const std::uint8_t> Chunk() const;

    // The position of the next chunk, in bytes.
    [[nodiscard]] std::uint64_t Position() const { return positionBytes_; }

  private:
    std::wstring path_;
    std::shared_ptr<const InputFile> file_;
    std::size_t chunkBytes_;
    std::vector<std::uint8_t> buffer_;
    std::uint64_t positionBytes_ = 0;
    std::uint64_t expectedBytes_ = 0;
    std::size_t lastReadBytes_ = 0;
    std::size_t chunkLength_ = 0;
};

}  // namespace sealkeeper

#endif
