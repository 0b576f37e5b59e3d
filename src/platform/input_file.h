// A file open for reading at positions of the caller's choice.
#ifndef SEALKEEPER_PLATFORM_INPUT_FILE_H
#define SEALKEEPER_PLATFORM_INPUT_FILE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/file_system.h"

namespace sealkeeper {

// Owner of a file descriptor; closes it when it goes. Neither copied nor moved.
class InputFile {
  public:
    InputFile() = default;
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    // Opens the file at `path`, once. False when it cannot be opened. A directory can be opened,
    // but not read, and so can a FIFO, whose writer is not waited for.
    [[nodiscard]] bool Open(const std::string& path);

    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }

    // What the open file is.
    [[nodiscard]] FileStatus Status() const { return StatusOfOpenFile(descriptor_); }

    // Fills `bytes` with what the file holds at `offset` and returns how many bytes it delivered:
    // less than asked for where the file ends or cannot be read any further.
    [[nodiscard]] std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const;

    // Tells the system that these bytes will be read soon, so that a disk can fetch them meanwhile.
    void ReadAhead(std::uint64_t offset, std::size_t lengthBytes) const;

  private:
    int descriptor_ = -1;
};

}  // namespace sealkeeper

#endif
