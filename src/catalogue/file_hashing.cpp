#include "catalogue/file_hashing.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "app/console_log.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/progress.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

void SetSize(FileToHash& file, std::uint64_t sizeBytes) {
    file.sizeBytes = sizeBytes;
    file.chunkCount = file.reader ? ChunkCountOf(sizeBytes) : 0;
}

ResultCode AppendDigest(const HashedChunk& chunk, std::vector<Sha256Digest>& digests) {
    if (!chunk.isRead) {
        return ResultCode::CatalogueIOError;
    }
    if (chunk.hashError != 0) {
        return ResultCode::CatalogueError;
    }
    digests.push_back(chunk.digest);
    return ResultCode::Ok;
}

}  // namespace

ResultCode HashFileChunks(const std::wstring& path, std::uint64_t sizeBytes,
                          std::vector<Sha256Digest>& digests) {
    if (path.empty() || sizeBytes == 0) {
        return ResultCode::FileVerificationIOError;
    }
    FileHasher hasher(1, [&](std::size_t /*index*/) {
        FileToHash file = OpenFileToHash(path);
        SetSize(file, sizeBytes);
        return file;
    });
    return HashFileChunks(hasher, hasher.NextFile(), path, digests);
}

ResultCode HashFileChunks(FileHasher& hasher, const FileToHash& file, const std::wstring& path,
                          std::vector<Sha256Digest>& digests) {
    digests.clear();
    // The line is ended by the last progress tick.
    Log(LogLevel::Info, "Hashing %s...", WideToUtf8(path).c_str());
    if (!file.reader) {
        return ResultCode::CatalogueError;
    }
    for (std::uint64_t chunk = 0; chunk < file.chunkCount; ++chunk) {
        if (const ResultCode code = AppendDigest(hasher.NextDigest(), digests);
            code != ResultCode::Ok) {
            return code;
        }
        ProgressTick(false);
    }
    ProgressTick(true);
    return ResultCode::Ok;
}

FileToHash OpenFileToHash(const std::wstring& path) {
    FileToHash file;
    auto reader = std::make_unique<ChunkedFileReader>(path, kChunkBytes);
    if (reader->Open()) {
        file.status = reader->File().Status();
        file.reader = std::move(reader);
        SetSize(file, static_cast<std::uint64_t>(std::max<std::int64_t>(file.status.sizeBytes, 0)));
    }
    return file;
}

}  // namespace sealkeeper
