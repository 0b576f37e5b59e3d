// Shows the progress of a verification chunk by chunk, since a single file may take minutes.
#ifndef SEALKEEPER_INSPECT_CHECK_FILE_PROGRESS_H
#define SEALKEEPER_INSPECT_CHECK_FILE_PROGRESS_H

#include <cstdint>

#include "inspect/report/progress_bar.h"

namespace sealkeeper {

// Receives the ticks of the verification while it exists. Only one may exist at a time.
class FileProgress {
  public:
    explicit FileProgress(std::uint64_t totalBytes);
    FileProgress(const FileProgress&) = delete;
    FileProgress& operator=(const FileProgress&) = delete;
    ~FileProgress();

    // The following ticks belong to a file of this size.
    void BeginFile(std::uint64_t sizeBytes) { bytesLeft_ = sizeBytes; }

    // Counts the rest of the file as done, even if it was not read.
    void EndFile();

  private:
    void AdvanceBy(std::uint64_t bytes);

    ProgressBar bar_;
    // Of the current file.
    std::uint64_t bytesLeft_ = 0;
};

}  // namespace sealkeeper

#endif
