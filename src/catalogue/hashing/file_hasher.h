// Hashes files one after the other and reads ahead into the files that follow, so that small files
// keep all lanes busy as well and the disk fetches what comes next while the processor hashes.
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

// The caller sees each file as it is when its turn comes, or later: a file that was opened ahead
// and has changed since is opened again. Its status shows changes, including removal and
// replacement. Not detected: changes to directories or links on the path of the file; writes
// through a memory mapping to a page that was already dirty; and changes that keep the size within
// the same tick of the file system's clock.
class FileHasher {
  public:
    // `open` is called for each of `fileCount` files, in order, but ahead of their turn. It is
    // called again for a file that could not be opened ahead or has changed since, and for those
    // opened after it. Exceptions from it, and lack of memory, come out of the operations below;
    // after one, the hasher can only be destroyed.
    FileHasher(std::size_t fileCount, OpenFile open,
               std::unique_ptr<ChunkHasher> chunks = MakeChunkHasher());

    // Moves on to the next file and drops the remaining chunks of the one before. Call at most
    // `fileCount` times. The reference is valid until the next call of this or of `OpenFileAgain`.
    const FileToHash& NextFile();

    // The digest of the next chunk of that file. Past the last one, a chunk with `isRead` false.
    [[nodiscard]] HashedChunk NextDigest();

    // Whether the file has changed since it was opened; its digests may then mix states of the
    // file. Call after all digests were taken. False for a file that is not read.
    [[nodiscard]] bool HasFileChanged() const;

    // Tells the hasher that the caller read bytes of the file in another way than by `NextDigest`.
    // An earlier check of the status does not cover those.
    void NoteOtherReading() { isKnownUnchanged_ = false; }

    // Opens the same file again, as it is now, and starts over with its first chunk.
    const FileToHash& OpenFileAgain();

  private:
    bool IsAsItWasOpened();
    void AddChunksAhead();
    [[nodiscard]] std::size_t WantedChunks() const;
    [[nodiscard]] bool HasRoom() const;

    FileWindow window_;
    std::unique_ptr<ChunkHasher> chunks_;
    ReadAheadPolicy advice_;
    // The number of digests taken of the current file.
    std::uint64_t takenChunks_ = 0;
    // Its status was last checked, and unchanged, after all its bytes had been read: no further
    // fstat is needed.
    bool isKnownUnchanged_ = false;
};

}  // namespace sealkeeper

#endif
