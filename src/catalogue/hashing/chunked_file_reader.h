// Reads one file of the game chunk by chunk through a single buffer: what a chunk's first reading
// gave is checked with it once more.
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
    // Of a file still to be opened.
    ChunkedFileReader(std::wstring path, std::size_t chunkBytes);
    // Of a file that is open.
    ChunkedFileReader(std::shared_ptr<const InputFile> file, std::size_t chunkBytes);

    // Opens the file at the path as `OpenGameFile` does, and takes the path that the index has for
    // it where it was opened there. Once. False when it cannot be opened.
    [[nodiscard]] bool Open();

    [[nodiscard]] const std::wstring& Path() const { return path_; }

    // Expects `sizeBytes` bytes in the file and allocates a buffer of that many, one chunk at most.
    // False when `sizeBytes` is 0 or there is a buffer already; lack of memory is an exception.
    [[nodiscard]] bool AllocateBuffer(std::uint64_t sizeBytes);

    // Reads the next chunk, or what is left of the expected bytes: a chunk of no bytes once
    // there are none left. False when the file is not open, ends before the chunk is complete
    // or cannot be read; the position then stays where it was, and there is no chunk.
    [[nodiscard]] bool ReadNextChunk();

    // The bytes that the last `ReadNextChunk` delivered, whether it failed or not.
    [[nodiscard]] std::size_t LastReadBytes() const { return lastReadBytes_; }

    // Moves a reader that has its buffer to `positionBytes`, which is at most the expected size.
    void SeekTo(std::uint64_t positionBytes);

    // The bytes that the last `ReadNextChunk` read; good until the next one.
    [[nodiscard]] std::span<const std::uint8_t> Chunk() const;

    // The bytes consumed so far.
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
