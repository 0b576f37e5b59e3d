// The owner of a POSIX file descriptor.
#ifndef SEALKEEPER_PLATFORM_FILE_DESCRIPTOR_H
#define SEALKEEPER_PLATFORM_FILE_DESCRIPTOR_H

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace sealkeeper {

// Closes the descriptor on destruction. Neither copied nor moved.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor();

    // Opens the file at `path`; call once. False when it cannot be opened. A directory can be
    // opened, but not read. A FIFO is opened without waiting for a writer.
    [[nodiscard]] bool OpenForReading(const std::string& path);

    // Opens what `path` names for writing; call once. Nothing is created or truncated. False, with
    // errno set, when it cannot be opened. A FIFO can be opened only while a reader has it open.
    [[nodiscard]] bool OpenForWriting(const std::string& path);

    // Opens the file at `path` for writing and truncates it; call once. A file that is created gets
    // `mode`, less the umask. False, with errno set, when it cannot be opened. Waits for the reader
    // of a FIFO.
    [[nodiscard]] bool OpenTruncated(const std::string& path, mode_t mode);

    // Creates the file at `path` with `mode`, less the umask, and opens it for writing; call once.
    // False, with errno set, when it cannot be created or something is there already, even a link.
    [[nodiscard]] bool Create(const std::string& path, mode_t mode);

    // Writes all of `bytes`. False, with errno set, when they cannot all be written; some may have
    // been.
    [[nodiscard]] bool Write(std::span<const std::uint8_t> bytes) const;

    // Flushes the open file or directory to the disk. False, with errno set, when that failed. True
    // on a file system that cannot flush on demand.
    [[nodiscard]] bool Synchronise() const;

    // Closes the descriptor and returns whether the system did so without an error. Nothing is open
    // afterwards.
    [[nodiscard]] bool Close();

    // Becomes a duplicate of `descriptor`; call once. False when that is not open or the process
    // may open no more.
    [[nodiscard]] bool Duplicate(int descriptor);

    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }

    // Whether opening had to wait for the holder of a lease, who may have changed the file.
    [[nodiscard]] bool HasWaited() const { return hasWaited_; }

    // Negative when nothing is open.
    [[nodiscard]] int Get() const { return descriptor_; }

    // Gives the open descriptor up to another owner.
    void Release() { descriptor_ = -1; }

  private:
    bool Open(const std::string& path, int flags, mode_t mode = 0);
    bool OpenWithoutWaiting(const std::string& path, int flags);

    int descriptor_ = -1;
    bool hasWaited_ = false;
};

// How many more descriptors the process may open now, `most` at most. Opens them to find out, and
// closes them again. 0 when standard input is closed.
[[nodiscard]] std::size_t CountFreeDescriptors(std::size_t most);

}  // namespace sealkeeper

#endif
