// A file open for reading at any position.
#ifndef SEALKEEPER_PLATFORM_INPUT_FILE_H
#define SEALKEEPER_PLATFORM_INPUT_FILE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/file_descriptor.h"
#include "platform/file_system.h"

namespace sealkeeper {

class InputFile {
  public:
    // As `FileDescriptor::OpenForReading`.
    [[nodiscard]] bool Open(const std::string& path) { return descriptor_.OpenForReading(path); }

    [[nodiscard]] bool IsOpen() const { return descriptor_.IsOpen(); }

    // As `FileDescriptor::HasWaited`.
    [[nodiscard]] bool HasWaited() const { return descriptor_.HasWaited(); }

    // The status of the open file.
    [[nodiscard]] FileStatus Status() const { return StatusOfOpenFile(descriptor_.Get()); }

    // Fills `bytes` from the file at `offset` and returns how many bytes were read: fewer than
    // asked for if the file ends or cannot be read any further.
    [[nodiscard]] std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) const;

    // Tells the system that these bytes will be read soon, so that a disk can fetch them meanwhile.
    void ReadAhead(std::uint64_t offset, std::size_t lengthBytes) const;

    // How many system calls that takes.
    [[nodiscard]] static std::size_t ReadAheadSteps(std::size_t lengthBytes);

  private:
    void Advise(std::uint64_t offset, std::size_t lengthBytes) const;

    FileDescriptor descriptor_;
};

}  // namespace sealkeeper

#endif
