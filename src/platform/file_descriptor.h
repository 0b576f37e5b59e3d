// The owner of a POSIX file descriptor.
#ifndef SEALKEEPER_PLATFORM_FILE_DESCRIPTOR_H
#define SEALKEEPER_PLATFORM_FILE_DESCRIPTOR_H

#include <cstddef>
#include <string>

namespace sealkeeper {

// Closes the descriptor when it goes. Neither copied nor moved.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    // Opens the file at `path`, once. False when it cannot be opened. A directory can be opened,
    // but not read, and so can a FIFO, whose writer is not waited for.
    [[nodiscard]] bool OpenForReading(const std::string& path);

    // Becomes a second descriptor of what `descriptor` names, once. False when there is no such
    // descriptor or no room for another one.
    [[nodiscard]] bool Duplicate(int descriptor);

    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }

    // Whether the file could be opened only once somebody gave it up, who may have changed it.
    [[nodiscard]] bool HasWaited() const { return hasWaited_; }

    // Negative when nothing is open.
    [[nodiscard]] int Get() const { return descriptor_; }

    // Leaves the open descriptor to another owner.
    void Release() { descriptor_ = -1; }

  private:
    int descriptor_ = -1;
    bool hasWaited_ = false;
};

// How many more descriptors the process may open now; `most` when there are more. Opens them to
// find out, and closes them. 0 when standard input is closed.
[[nodiscard]] std::size_t CountFreeDescriptors(std::size_t most);

}  // namespace sealkeeper

#endif
