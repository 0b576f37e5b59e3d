#include "catalogue/catalogue_entry.h"

#include <algorithm>
#include <iterator>

#include "app/console_log.h"
#include "catalogue/hashing/chunks.h"
#include "catalogue/hashing/game_file.h"
#include "catalogue/progress.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// Keeps the capacity of the digests.
void Clear(CatalogueEntry& entry) {
    entry.fileSizeBytes = 0;
    entry.namePosition = 0;
    entry.path.fill(u'\0');
    entry.digests.clear();
}

ResultCode HashOnce(const std::wstring& path, const FileToHash& file, FileHasher& hasher,
                    CatalogueEntry& entry) {
    if (file.status.type == FileType::Unknown || file.status.sizeBytes < 0) {
        Log(LogLevel::Error, "[Error] Inaccessible file: '%s'.\n", WideToUtf8(path).c_str());
        return ResultCode::CatalogueIOError;
    }
    entry.fileSizeBytes = static_cast<std::uint64_t>(file.status.sizeBytes);
    entry.digests.clear();
    if (entry.fileSizeBytes == 0) {
        Log(LogLevel::Warning, "[Warning] Empty file: '%s'.\n", WideToUtf8(path).c_str());
        return ResultCode::Ok;
    }
    return HashFileChunks(path, file, hasher, entry.digests);
}

// Without the check for changes, a file could be sealed in a state that it never had.
ResultCode HashUnchanged(const std::wstring& path, FileHasher& hasher, CatalogueEntry& entry) {
    ResultCode code = HashOnce(path, hasher.NextFile(), hasher, entry);
    if (code != ResultCode::Ok || !hasher.HasFileChanged()) {
        return code;
    }
    // A file that is gone by now must not count as missing, which would seal it as empty.
    if (const FileToHash& again = hasher.OpenFileAgain(); again.file) {
        code = HashOnce(path, again, hasher, entry);
        if (code != ResultCode::Ok || !hasher.HasFileChanged()) {
            return code;
        }
    }
    Log(LogLevel::Error, "File changed while it was being hashed: '%s'.\n",
        WideToUtf8(path).c_str());
    return ResultCode::CatalogueIOError;
}

FileToHash FirstBytesOf(const GameFile& found, std::uint64_t sizeBytes) {
    return {found.file, found.status, sizeBytes, found.file ? ChunkCountOf(sizeBytes) : 0};
}

}  // namespace

std::u16string StoredFormOf(const std::wstring& path) {
    std::u16string stored = WideToUtf16(path);
    if (stored.starts_with(u"./")) {
        stored.erase(0, 2);
    }
    std::replace(stored.begin(), stored.end(), u'\\', u'/');
    return stored;
}

FileToHash OpenCollectedFile(const std::wstring& path, const FileStatus& seen) {
    const GameFile found = OpenGameFile(path, seen);
    return FirstBytesOf(
        found, static_cast<std::uint64_t>(std::max<std::int64_t>(found.status.sizeBytes, 0)));
}

ResultCode HashFileChunks(const std::wstring& path, std::uint64_t sizeBytes,
                          std::vector<Sha256Digest>& digests) {
    if (path.empty() || sizeBytes == 0) {
        return ResultCode::FileVerificationIOError;
    }
    FileHasher hasher(
        1, [&](std::size_t /*index*/) { return FirstBytesOf(OpenGameFile(path), sizeBytes); });
    return HashFileChunks(path, hasher.NextFile(), hasher, digests);
}

ResultCode HashFileChunks(const std::wstring& path, const FileToHash& file, FileHasher& hasher,
                          std::vector<Sha256Digest>& digests) {
    digests.clear();
    // The line is ended by the last progress tick.
    Log(LogLevel::Info, "Hashing %s...", WideToUtf8(path).c_str());
    if (!file.file) {
        return ResultCode::CatalogueError;
    }
    for (std::uint64_t chunk = 0; chunk < file.chunkCount; ++chunk) {
        const HashedChunk hashed = hasher.NextDigest();
        if (!hashed.isRead) {
            return ResultCode::CatalogueIOError;
        }
        digests.push_back(hashed.digest);
        ProgressTick(false);
    }
    ProgressTick(true);
    return ResultCode::Ok;
}

ResultCode BuildCatalogueEntry(const std::wstring& path, CatalogueEntry& entry) {
    FileHasher hasher(1, [&](std::size_t /*index*/) { return OpenCollectedFile(path); });
    return BuildCatalogueEntry(path, hasher, entry);
}

ResultCode BuildCatalogueEntry(const std::wstring& path, FileHasher& hasher,
                               CatalogueEntry& entry) {
    Clear(entry);
    if (path.empty()) {
        return ResultCode::CatalogueIOError;
    }
    // Checked before the hash is awaited, which may take minutes.
    const std::u16string stored = StoredFormOf(path);
    if (stored.size() > entry_record::kMaxPathUnits) {
        return RejectLongPath(path);
    }
    if (const ResultCode code = HashUnchanged(path, hasher, entry); code != ResultCode::Ok) {
        return code;
    }
    std::copy(stored.begin(), stored.end(), entry.path.begin());
    entry.namePosition = NamePositionOf(stored);
    return ResultCode::Ok;
}

std::uint32_t NamePositionOf(std::span<const char16_t> path) {
    const auto separator = std::find(path.rbegin(), path.rend(), u'/');
    return static_cast<std::uint32_t>(std::distance(separator, path.rend()));
}

ResultCode RejectLongPath(const std::wstring& path) {
    Log(LogLevel::Error, "Path too long for the catalogue: '%s'.\n", WideToUtf8(path).c_str());
    return ResultCode::CatalogueError;
}

}  // namespace sealkeeper
