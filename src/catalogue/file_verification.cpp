// Checks one file of the game against its entry.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "catalogue/hashing/chunked_file_reader.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/hashing/game_file.h"
#include "catalogue/progress.h"
#include "catalogue/stored_entry.h"

namespace sealkeeper {
namespace {

// Judges the chunks of a file one after the other.
class ChunkJudge {
  public:
    // `path` is that of `file`, which is open.
    ChunkJudge(const StoredEntry& entry, const std::wstring& path,
               const std::shared_ptr<const InputFile>& file, MismatchHandler handler, void* context)
        : entry_(entry),
          path_(path),
          reader_(file, kChunkBytes),
          handler_(handler),
          context_(context) {}

    // `hashed` is the result of the first reading of chunk `index`.
    ResultCode Judge(std::uint32_t index, const HashedChunk& hashed) {
        // Deliberate quirk: the chunk after a recovered one is not compared.
        const bool isLenient = std::exchange(previousRecovered_, false);
        const Reading reading = hashed.isRead ? Reading{true, hashed.digest} : ReadOnceMore(index);
        if (!reading.isRead) {
            return isLenient && hasBuffer_ && reader_.LastReadBytes() == 0
                       ? ResultCode::Ok
                       : ResultCode::FileVerificationIOError;
        }
        if (isLenient) {
            return ResultCode::Ok;
        }
        if (Matches(index, reading)) {
            ProgressTick(false);
            return ResultCode::Ok;
        }
        return RecoverChunk(index);
    }

    // Whether a chunk was read more than once.
    [[nodiscard]] bool HasReadAgain() const { return hasReadAgain_; }

  private:
    // A reading without a digest matches nothing.
    struct Reading {
        bool isRead = false;
        std::optional<Sha256Digest> digest;
    };

    // Reads the chunk once more, through the open file.
    Reading ReadOnceMore(std::uint32_t index) {
        hasReadAgain_ = true;
        return HasBuffer() ? ReadChunk(reader_, index) : Reading{};
    }

    bool HasBuffer() {
        try {
            if (!hasBuffer_) {
                hasBuffer_ = reader_.AllocateBuffer(entry_.FileSizeBytes());
            }
        } catch (const std::bad_alloc&) {
            // Lack of memory for another reading fails only this file.
        }
        return hasBuffer_;
    }

    // A chunk that differs is read again, because the first read may have gone wrong. If it still
    // differs, the handler decides.
    ResultCode RecoverChunk(std::uint32_t index) {
        hasReadAgain_ = true;
        const Reading reading = ReadAfresh(index);
        if (!reading.isRead) {
            return ResultCode::FileVerificationIOError;
        }
        if (!Matches(index, reading) && !HandlerAccepts(index)) {
            return ResultCode::FileVerificationHashMismatch;
        }
        previousRecovered_ = true;
        return ResultCode::Ok;
    }

    // Reads the chunk through a newly opened file. Without the memory for that, it counts as
    // unreadable.
    [[nodiscard]] Reading ReadAfresh(std::uint32_t index) const {
        try {
            ChunkedFileReader second(path_, kChunkBytes);
            if (!second.Open() || !second.AllocateBuffer(entry_.FileSizeBytes())) {
                return {};
            }
            return ReadChunk(second, index);
        } catch (const std::bad_alloc&) {
            return {};
        }
    }

    Reading ReadChunk(ChunkedFileReader& reader, std::uint32_t index) const {
        reader.SeekTo(ChunkOffset(index, entry_.FileSizeBytes()));
        if (!reader.ReadNextChunk()) {
            return {};
        }
        Sha256Digest digest{};
        if (ComputeSha256(reader.Chunk(), digest) != 0) {
            return {true, std::nullopt};
        }
        return {true, digest};
    }

    [[nodiscard]] bool Matches(std::uint32_t index, const Reading& reading) const {
        return reading.digest && std::equal(reading.digest->begin(), reading.digest->end(),
                                            entry_.Digest(index).begin());
    }

    bool HandlerAccepts(std::uint32_t index) {
        return handler_ != nullptr &&
               handler_(entry_, ChunkOffset(std::uint64_t{index} + 1, entry_.FileSizeBytes()),
                        context_);
    }

    const StoredEntry& entry_;
    const std::wstring& path_;
    // Reads the open file.
    ChunkedFileReader reader_;
    MismatchHandler handler_;
    void* context_;
    // Whether `reader_` has its buffer.
    bool hasBuffer_ = false;
    bool previousRecovered_ = false;
    bool hasReadAgain_ = false;
};

ResultCode CheckStatus(const StoredEntry& entry, const FileStatus& status) {
    if (status.sizeBytes < 0) {
        return ResultCode::FileVerificationIOError;
    }
    if (static_cast<std::uint64_t>(status.sizeBytes) != entry.FileSizeBytes()) {
        return ResultCode::FileVerificationSizeMismatch;
    }
    // Only a regular file has content to check, even if the size agrees.
    return status.type == FileType::Regular ? ResultCode::Ok : ResultCode::FileVerificationIOError;
}

ResultCode CheckFile(const StoredEntry& entry, const std::wstring& path, const FileToHash& file,
                     FileHasher& hasher, MismatchHandler handler, void* context) {
    // A device is not opened, but has a size.
    if (!file.file && file.status.type != FileType::Other) {
        return ResultCode::FileVerificationIOError;
    }
    if (const ResultCode code = CheckStatus(entry, file.status); code != ResultCode::Ok) {
        return code;
    }
    // There are no chunks for an empty file, for a check of the size only, and for an entry without
    // digests.
    ChunkJudge judge(entry, path, file.file, handler, context);
    for (std::uint32_t index = 0; index < file.chunkCount; ++index) {
        if (const ResultCode code = judge.Judge(index, hasher.NextDigest());
            code != ResultCode::Ok) {
            return code;
        }
    }
    if (judge.HasReadAgain()) {
        hasher.NoteOtherReading();
    }
    return ResultCode::Ok;
}

}  // namespace

ResultCode StoredEntry::VerifyCatalogueFile(const std::wstring& path, MismatchHandler handler,
                                            void* context) const {
    FileHasher hasher(1, [&](std::size_t /*index*/) { return OpenFile(path); });
    return VerifyNextFile(path, hasher, handler, context);
}

// The chunks of a file that changed meanwhile may never have existed together, so it is checked
// once more.
ResultCode StoredEntry::VerifyNextFile(const std::wstring& path, FileHasher& hasher,
                                       MismatchHandler handler, void* context) const {
    ResultCode code = CheckFile(*this, path, hasher.NextFile(), hasher, handler, context);
    if (code != ResultCode::Ok || !hasher.HasFileChanged()) {
        return code;
    }
    code = CheckFile(*this, path, hasher.OpenFileAgain(), hasher, handler, context);
    return code == ResultCode::Ok && hasher.HasFileChanged() ? ResultCode::FileVerificationIOError
                                                             : code;
}

FileToHash StoredEntry::OpenFile(const std::wstring& path) const {
    const GameFile found = OpenGameFile(path);
    const bool isCompared = found.file && FileSizeBytes() > 0 &&
                            extent_ == CheckExtent::SizeAndChunks &&
                            CheckStatus(*this, found.status) == ResultCode::Ok;
    return {found.file, found.status, FileSizeBytes(), isCompared ? DigestCount() : 0};
}

}  // namespace sealkeeper
