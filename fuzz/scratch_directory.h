// A directory of its own for a fuzzer that needs files, in memory where the system has a file
// system in memory.
#ifndef SEALKEEPER_FUZZ_SCRATCH_DIRECTORY_H
#define SEALKEEPER_FUZZ_SCRATCH_DIRECTORY_H

#include <string>

#include "fuzzer.h"

namespace sealkeeper::fuzz {

// Removed with all it holds when the process ends in good order.
class ScratchDirectory {
  public:
    ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    ~ScratchDirectory();

    // Absolute, ending in '/'.
    [[nodiscard]] const std::string& Path() const { return path_; }

    // Writes the file `name`, making the directories that its name goes through.
    void Write(const std::string& name, ByteView content) const;

  private:
    std::string path_;
};

// The content of the file at `path`, which must be there.
[[nodiscard]] Bytes ContentOf(const std::string& path);

}  // namespace sealkeeper::fuzz

#endif
