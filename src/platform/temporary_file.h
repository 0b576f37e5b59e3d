// A temporary file that is to replace another file.
#ifndef SEALKEEPER_PLATFORM_TEMPORARY_FILE_H
#define SEALKEEPER_PLATFORM_TEMPORARY_FILE_H

#include <sys/types.h>

#include <string>

#include "platform/file_descriptor.h"

namespace sealkeeper {

// Removes the file on destruction, unless it was renamed. Neither copied nor moved.
class TemporaryFile {
  public:
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    // Creates it in `directory` under a name that is not in use there; call once. The name has
    // eight bytes and begins with a dot, so that no walk over a game takes it for a file of the
    // game. `directory` is empty or ends in a separator. The file gets `mode`, less the umask.
    // False, with errno set, when it cannot be created.
    [[nodiscard]] bool CreateIn(const std::string& directory, mode_t mode);

    // The open file; it can be written until it is closed.
    [[nodiscard]] FileDescriptor& Descriptor() { return descriptor_; }

    // Renames it to `target`, which is in the same directory, and replaces what is there by now.
    // False, with errno set, on failure; then nothing has changed.
    [[nodiscard]] bool RenameTo(const std::string& target);

  private:
    FileDescriptor descriptor_;
    // Empty when there is nothing to remove.
    std::string path_;
};

}  // namespace sealkeeper

#endif
