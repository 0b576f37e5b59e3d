// Shows how far a verification has come, chunk by chunk: a file may take minutes.
#ifndef SEALKEEPER_INSPECT_CHECK_FILE_PROGRESS_H
#define SEALKEEPER_INSPECT_CHECK_FILE_PROGRESS_H

#include <cstdint>

#include "inspect/report/progress_bar.h"

namespace sealkeeper {

// Listens to the ticks of verifying as long as it is there; one at a time.
class FileProgress {
  public:
    explicit FileProgress(std::uint64_t totalBytes);
    FileProgress(const FileProgress&) = delete;
    FileProgress& operator=(const FileProgress&) = delete;
    ~FileProgress();

    // The next ticks are of a file of so many bytes.
    void BeginFile(std::uint64_t sizeBytes) { bytesLeft_ = sizeBytes; }

    // What was not ticked of it is done as well.
    void EndFile();

  private:
    void AdvanceBy(std::uint64_t bytes);

    ProgressBar bar_;
    // Of the file that was begun.
    std::uint64_t bytesLeft_ = 0;
};

}  // namespace sealkeeper

#endif
