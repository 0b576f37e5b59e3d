// Hashes files one after the other and reads ahead in those that follow: small files keep all lanes
// busy, too, and the disk brings what comes next while the processor hashes.
#ifndef SEALKEEPER_CATALOGUE_HASHING_FILE_HASHER_H
#define SEALKEEPER_CATALOGUE_HASHING_FILE_HASHER_H

#include <cstddef>
#include <cstdint>
#include <memory>

#include "catalogue/hashing/chunk_hasher.h"
#include "catalogue/hashing/file_window.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "catalogue/hashing/read_ahead_policy.h"

namespace sealkeeper {

// What a caller sees of a file is what it was when its turn came, or later: one that was opened
// ahead and has changed since is opened anew. Its status tells of a change, its removal and its
// replacement included. Not detected: what is done to the directories and links on the way to a
// file, what is written through a mapping of a page that was written to before, and what keeps the
// size within the same tick of the file system's clock.
class FileHasher {
  public:
    // `open` is called for each of `fileCount` files, in order, but ahead of their turn; and again
    // for a file that could not be opened ahead or has changed since, and for those opened ahead of
    // that. An exception from it, or for lack of memory, comes out of the operations below; the
    // hasher can then only be destroyed.
    FileHasher(std::size_t fileCount, OpenFile open,
               std::unique_ptr<ChunkHasher> chunks = MakeChunkHasher());

    // Goes on to the next file, of which there is one, and gives up what is left of the one before.
    // The file stays where it is until the next call of this or of `OpenFileAgain`.
    const FileToHash& NextFile();

    // The digest of the next chunk of that file; past the last one, a chunk that was not read.
    [[nodiscard]] HashedChunk NextDigest();

    // Whether the file, whose digests were all taken, has changed since it was opened: they may
    // then be of a state that it never had. False for a file that is not read.
    [[nodiscard]] bool HasFileChanged() const;

    // Tells that bytes of the file, which count for the caller, were read otherwise than by
    // `NextDigest`: what was seen of its status before says nothing of those.
    void NoteOtherReading() { isKnownUnchanged_ = false; }

    // Begins the same file anew, as it is now.
    const FileToHash& OpenFileAgain();

  private:
    bool IsAsItWasOpened();
    void AddChunksAhead();
    [[nodiscard]] bool HasRoom() const;

    FileWindow window_;
    std::unique_ptr<ChunkHasher> chunks_;
    ReadAheadPolicy advice_;
    // Of the current file.
    std::uint64_t takenChunks_ = 0;
    // All its bytes had been read when it was last seen to be as it was opened.
    bool isKnownUnchanged_ = false;
    bool hasCurrentFile_ = false;
};

}  // namespace sealkeeper

#endif
