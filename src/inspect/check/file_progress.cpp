#include "inspect/check/file_progress.h"

#include <algorithm>

#include "catalogue/hashing/chunks.h"
#include "catalogue/progress.h"

namespace sealkeeper {

FileProgress::FileProgress(std::uint64_t totalBytes) : bar_(totalBytes) {
    const TickListener listener = [](void* progress) {
        static_cast<FileProgress*>(progress)->AdvanceBy(kChunkBytes);
    };
    SendTicksTo(listener, this);
}

FileProgress::~FileProgress() {
    SendTicksTo(nullptr, nullptr);
}

void FileProgress::EndFile() {
    AdvanceBy(bytesLeft_);
}

// Capped, since the last chunk of a file may be short.
void FileProgress::AdvanceBy(std::uint64_t bytes) {
    const std::uint64_t done = std::min(bytes, bytesLeft_);
    bytesLeft_ -= done;
    bar_.Advance(done);
}

}  // namespace sealkeeper
