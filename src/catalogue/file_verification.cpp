// The check of one file of the game against its entry.
#include "catalogue/stored_entry.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include "catalogue/catalogue_format.h"
#include "catalogue/chunked_file_reader.h"
#include "catalogue/progress.h"

namespace sealkeeper {
namespace {

// Checks the chunks of an open file one after the other.
class ChunkVerifier {
  public:
    ChunkVerifier(const StoredEntry& entry, ChunkedFileReader& reader, MismatchHandler handler,
                  void* context)
        : entry_(entry), reader_(reader), handler_(handler), context_(context) {}

    ResultCode VerifyChunk(std::uint32_t index) {
        // Leniency after a recovery, deliberate: this chunk is not compared.
        const bool isLenient = std::exchange(previousRecovered_, false);
        if (!ReadWithOneRetry()) {
            const bool isSkipped = isLenient && reader_.LastReadBytes() == 0 && SkipChunk();
            return isSkipped ? ResultCode::Ok : ResultCode::FileVerificationIOError;
        }
        if (isLenient) {
            return ResultCode::Ok;
        }
        if (ChunkMatches(reader_, index)) {
            ProgressTick(false);
            return ResultCode::Ok;
        }
        return RecoverChunk(index);
    }

  private:
    // Leaves out a chunk that could not be read.
    bool SkipChunk() {
        const std::uint64_t leftBytes = entry_.FileSizeBytes() - reader_.Position();
        return reader_.SeekTo(reader_.Position() + std::min<std::uint64_t>(leftBytes, kChunkBytes));
    }

    bool ReadWithOneRetry() {
        return reader_.ReadNextChunk() || (reader_.RewindFailedRead() && reader_.ReadNextChunk());
    }

    [[nodiscard]] bool ChunkMatches(const ChunkedFileReader& reader, std::uint32_t index) const {
        Sha256Digest digest{};
        return ComputeSha256(reader.Chunk(), digest) == 0 &&
               std::equal(digest.begin(), digest.end(), entry_.Digest(index).begin());
    }

    // A chunk that differs is read afresh, because a read may have gone wrong; what differs still
    // is up to the handler.
    ResultCode RecoverChunk(std::uint32_t index) {
        ChunkedFileReader second(reader_.Path(), kChunkBytes);
        const std::uint64_t chunkStart = reader_.Position() - reader_.Chunk().size();
        if (!second.Open() || !AllocateSecondBuffer(second) || !second.SeekTo(chunkStart) ||
            !second.ReadNextChunk()) {
            return ResultCode::FileVerificationIOError;
        }
        if (!ChunkMatches(second, index) && !HandlerAccepts()) {
            return ResultCode::FileVerificationHashMismatch;
        }
        previousRecovered_ = true;
        return ResultCode::Ok;
    }

    // The file has a chunk's buffer already, so to have no memory for another fails this file
    // alone.
    bool AllocateSecondBuffer(ChunkedFileReader& second) const {
        try {
            return second.AllocateBuffer(entry_.FileSizeBytes());
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    bool HandlerAccepts() {
        return handler_ != nullptr && handler_(entry_, reader_.Position(), context_);
    }

    const StoredEntry& entry_;
    ChunkedFileReader& reader_;
    MismatchHandler handler_;
    void* context_;
    bool previousRecovered_ = false;
};

ResultCode CheckStatus(const StoredEntry& entry, const FileStatus& status) {
    if (status.sizeBytes < 0) {
        return ResultCode::FileVerificationIOError;
    }
    if (static_cast<std::uint64_t>(status.sizeBytes) != entry.FileSizeBytes()) {
        return ResultCode::FileVerificationSizeMismatch;
    }
    // What is neither a file nor unknown has no content to check, whatever size it tells.
    return status.type == FileType::Directory || status.type == FileType::Other
               ? ResultCode::FileVerificationIOError
               : ResultCode::Ok;
}

}  // namespace

ResultCode StoredEntry::VerifyCatalogueFile(const std::wstring& path, MismatchHandler handler,
                                            void* context) const {
    ChunkedFileReader reader(path, kChunkBytes);
    if (path.empty() || !reader.Open()) {
        return ResultCode::FileVerificationIOError;
    }
    if (const ResultCode code = CheckStatus(*this, reader.Status()); code != ResultCode::Ok) {
        return code;
    }
    if (FileSizeBytes() == 0 || extent_ == CheckExtent::SizeOnly) {
        return ResultCode::Ok;
    }
    if (!reader.AllocateBuffer(FileSizeBytes())) {
        return ResultCode::Ok;
    }
    // An entry without digests is one whose size alone is known.
    ChunkVerifier verifier(*this, reader, handler, context);
    const std::uint32_t digestCount = DigestCount();
    for (std::uint32_t index = 0; index < digestCount; ++index) {
        if (const ResultCode code = verifier.VerifyChunk(index); code != ResultCode::Ok) {
            return code;
        }
    }
    return ResultCode::Ok;
}

}  // namespace sealkeeper
