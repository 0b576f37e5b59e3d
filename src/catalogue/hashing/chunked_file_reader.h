// One file of the game, open under its path or the one that the index has for it. What reads it
// without a buffer goes by `File`; chunk by chunk, it is read through a single buffer.
#ifndef SEALKEEPER_CATALOGUE_HASHING_CHUNKED_FILE_READER_H
#define SEALKEEPER_CATALOGUE_HASHING_CHUNKED_FILE_READER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/input_file.h"

namespace sealkeeper {

class ChunkedFileReader {
  public:
    ChunkedFileReader(std::wstring path, std::size_t chunkBytes);

    // Opens the file at the path or, where that fails, at the path that the process's game-file
    // index has for it, which becomes the reader's path. Once. False when neither can be opened.
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

    // The open file, for reading past the buffer and the position. Lives as long as the reader.
    [[nodiscard]] const InputFile& File() const { return file_; }

    // The bytes that the last `ReadNextChunk` read; good until the next one.
    [[nodiscard]] std::span<const std::uint8_t> Chunk() const;

    // The bytes consumed so far.
    [[nodiscard]] std::uint64_t Position() const { return positionBytes_; }

  private:
    std::wstring path_;
    std::size_t chunkBytes_;
    InputFile file_;
    std::vector<std::uint8_t> buffer_;
    std::uint64_t positionBytes_ = 0;
    std::uint64_t expectedBytes_ = 0;
    std::size_t lastReadBytes_ = 0;
    std::size_t chunkLength_ = 0;
};

}  // namespace sealkeeper

#endif
