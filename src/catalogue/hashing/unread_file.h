// The file of the last chunk that could not be read.
#ifndef SEALKEEPER_CATALOGUE_HASHING_UNREAD_FILE_H
#define SEALKEEPER_CATALOGUE_HASHING_UNREAD_FILE_H

#include <memory>

#include "catalogue/hashing/pending_chunk.h"
#include "platform/input_file.h"

namespace sealkeeper {

// The other chunks of that file probably cannot be read either, and each attempt may take long.
class UnreadFile {
  public:
    // Notes a chunk whose result is final. One that was dropped was not even tried to its end.
    void Note(const PendingChunk& ended) {
        if (!ended.result.isRead && !ended.isDropped) {
            file_ = ended.chunk.file;
        }
    }

    // Whether `chunk` is of that file.
    [[nodiscard]] bool HoldsBack(const ChunkToHash& chunk) const {
        return IsSameFile(chunk.file, file_);
    }

  private:
    std::weak_ptr<const InputFile> file_;
};

}  // namespace sealkeeper

#endif
