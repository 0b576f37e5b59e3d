// The owner of a POSIX file descriptor.
#ifndef SEALKEEPER_PLATFORM_FILE_DESCRIPTOR_H
#define SEALKEEPER_PLATFORM_FILE_DESCRIPTOR_H

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>
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

    // Opens what `path` names for writing, once, as it is: nothing is created or cut off. False,
    // with errno saying why, when it cannot be opened. A FIFO can be opened only if somebody reads
    // from it.
    [[nodiscard]] bool OpenForWriting(const std::string& path);

    // Opens the file at `path` for writing, once, empty; with `mode`, less the process's file mode
    // mask, if it is created. False when it cannot be opened. Waits for the reader of a FIFO.
    [[nodiscard]] bool OpenTruncated(const std::string& path, mode_t mode);

    // Creates the file at `path` with `mode`, less the process's file mode mask, and opens it for
    // writing, once. False, with errno saying why, when it cannot be created or something, be it a
    // link, is there already.
    [[nodiscard]] bool Create(const std::string& path, mode_t mode);

    // Writes all of `bytes`. False, with errno saying why, when they cannot be written; some may
    // be.
    [[nodiscard]] bool Write(std::span<const std::uint8_t> bytes) const;

    // Flushes the open file or directory to the disk. False, with errno saying why, when that
    // failed; a file system that does not flush on demand has done what it can.
    [[nodiscard]] bool Synchronise() const;

    // Closes what is open now and returns whether the system did so without an error. Nothing is
    // open afterwards.
    [[nodiscard]] bool Close();

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
    bool Open(const std::string& path, int flags, mode_t mode = 0);
    bool OpenWithoutWaiting(const std::string& path, int flags);

    int descriptor_ = -1;
    bool hasWaited_ = false;
};

// How many more descriptors the process may open now; `most` when there are more. Opens them to
// find out, and closes them. 0 when standard input is closed.
[[nodiscard]] std::size_t CountFreeDescriptors(std::size_t most);

}  // namespace sealkeeper

#endif
