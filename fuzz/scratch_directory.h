// A temporary directory for a fuzzer that needs files, in memory if the system has a file system
// there.
#ifndef SEALKEEPER_FUZZ_SCRATCH_DIRECTORY_H
#define SEALKEEPER_FUZZ_SCRATCH_DIRECTORY_H

#include <string>

#include "fuzzer.h"

namespace sealkeeper::fuzz {

// Removed with its content when the process exits normally.
class ScratchDirectory {
  public:
    ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    ~ScratchDirectory();

    // Absolute, ending in '/'.
    [[nodiscard]] const std::string& Path() const { return path_; }

    // Writes the file `name` and creates the directories in its name.
    void Write(const std::string& name, ByteView content) const;

  private:
    std::string path_;
};

// The content of the file at `path`, which must exist.
[[nodiscard]] Bytes ContentOf(const std::string& path);

}  // namespace sealkeeper::fuzz

#endif
