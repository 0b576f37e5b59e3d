// Reads one file chunk by chunk through a single buffer.
#ifndef SEALKEEPER_CATALOGUE_CHUNKED_FILE_READER_H
#define SEALKEEPER_CATALOGUE_CHUNKED_FILE_READER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/file_io.h"

namespace sealkeeper {

class ChunkedFileReader {
  public:
    ChunkedFileReader(std::wstring path, std::size_t chunkBytes);

    // Opens the file at the path. False when it cannot be opened.
    [[nodiscard]] bool Open();

    // Expects `sizeBytes` bytes in the file and allocates a buffer of that many, one chunk at most.
    // False when `sizeBytes` is 0 or there is a buffer already.
    [[nodiscard]] bool AllocateBuffer(std::uint64_t sizeBytes);

    // Reads the next chunk, or what is left of the expected bytes. False when the file is not
    // open or ends before the chunk is complete; the position then stays where it was.
    [[nodiscard]] bool ReadNextChunk();

    // The bytes that the last successful `ReadNextChunk` read; good until the next one.
    [[nodiscard]] std::span<const std::uint8_t> Chunk() const;

    // The bytes consumed so far.
    [[nodiscard]] std::uint64_t Position() const { return positionBytes_; }

  private:
    std::wstring path_;
    std::size_t chunkBytes_;
    FileStream stream_;
    std::vector<std::uint8_t> buffer_;
    std::uint64_t positionBytes_ = 0;
    std::uint64_t expectedBytes_ = 0;
    std::size_t lastChunkBytes_ = 0;
};

}  // namespace sealkeeper

#endif
