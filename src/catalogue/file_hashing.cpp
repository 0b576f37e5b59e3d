#include "catalogue/file_hashing.h"

#include "app/console_log.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/chunked_file_reader.h"
#include "catalogue/progress.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

ResultCode HashNextChunk(ChunkedFileReader& reader, std::vector<Sha256Digest>& digests) {
    if (!reader.ReadNextChunk()) {
        return ResultCode::CatalogueIOError;
    }
    Sha256Digest digest{};
    if (reader.Chunk().empty() || ComputeSha256(reader.Chunk(), digest) != 0) {
        return ResultCode::CatalogueError;
    }
    digests.push_back(digest);
    return ResultCode::Ok;
}

}  // namespace

ResultCode HashFileChunks(const std::wstring& path, std::uint64_t sizeBytes,
                          std::vector<Sha256Digest>& digests) {
    if (path.empty() || sizeBytes == 0) {
        return ResultCode::FileVerificationIOError;
    }
    digests.clear();
    // The line is ended by the last progress tick.
    Log(LogLevel::Info, "Hashing %s...", WideToUtf8(path).c_str());
    ChunkedFileReader reader(path, kChunkBytes);
    if (!reader.Open()) {
        return ResultCode::CatalogueError;
    }
    if (!reader.AllocateBuffer(sizeBytes)) {
        ProgressTick(true);
        return ResultCode::Ok;
    }
    while (reader.Position() < sizeBytes) {
        if (const ResultCode code = HashNextChunk(reader, digests); code != ResultCode::Ok) {
            return code;
        }
        ProgressTick(false);
    }
    ProgressTick(true);
    return ResultCode::Ok;
}

}  // namespace sealkeeper
