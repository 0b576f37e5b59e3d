// A file on its way into the place of another one.
#ifndef SEALKEEPER_PLATFORM_TEMPORARY_FILE_H
#define SEALKEEPER_PLATFORM_TEMPORARY_FILE_H

#include <sys/types.h>

#include <string>

#include "platform/file_descriptor.h"

namespace sealkeeper {

// Removes the file when it goes, unless the file was renamed. Neither copied nor moved.
class TemporaryFile {
  public:
    TemporaryFile() = default;
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    // Creates it in `directory`, once, with a name that nothing else has there: eight bytes, of
    // which the first is a dot, so that no walk over a game takes it for a file of the game.
    // `directory` is empty or ends in a separator; `mode` is lessened by the process's file mode
    // mask. False, with errno saying why, when it cannot be created.
    [[nodiscard]] bool CreateIn(const std::string& directory, mode_t mode);

    // Open for writing until it is closed.
    [[nodiscard]] FileDescriptor& Descriptor() { return descriptor_; }

    // Puts it in the place of `target`, in the same directory, whatever there is by now. False,
    // with errno saying why, when that cannot be; nothing has changed then.
    [[nodiscard]] bool RenameTo(const std::string& target);

  private:
    FileDescriptor descriptor_;
    // Empty when there is nothing to remove.
    std::string path_;
};

}  // namespace sealkeeper

#endif
