#include "catalogue/catalogue_entry.h"

#include <algorithm>
#include <iterator>

#include "app/console_log.h"
#include "catalogue/file_hashing.h"
#include "platform/file_system.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

// The stored form: UTF-16, relative to the game directory without "./", '/' as the only separator.
std::u16string StoredPath(const std::wstring& path) {
    std::u16string stored = WideToUtf16(path);
    if (stored.starts_with(u"./")) {
        stored.erase(0, 2);
    }
    std::replace(stored.begin(), stored.end(), u'\\', u'/');
    return stored;
}

// Keeps the room for digests.
void Clear(CatalogueEntry& entry) {
    entry.fileSizeBytes = 0;
    entry.namePosition = 0;
    entry.path.fill(u'\0');
    entry.digests.clear();
}

ResultCode SizeAndHash(const std::wstring& path, FileHasher& hasher, CatalogueEntry& entry) {
    const FileToHash& file = hasher.NextFile();
    if (file.status.sizeBytes < 0) {
        Log(LogLevel::Error, "[Error] Inaccessible file: '%s'.\n", WideToUtf8(path).c_str());
        return ResultCode::CatalogueIOError;
    }
    entry.fileSizeBytes = static_cast<std::uint64_t>(file.status.sizeBytes);
    if (entry.fileSizeBytes == 0) {
        Log(LogLevel::Warning, "[Warning] Empty file: '%s'.\n", WideToUtf8(path).c_str());
        return ResultCode::Ok;
    }
    return HashFileChunks(hasher, file, path, entry.digests);
}

}  // namespace

FileToHash OpenCollectedFile(const std::wstring& path) {
    FileToHash file = OpenFileToHash(path);
    if (!file.reader) {
        // Deliberately: one that is missing counts as empty, one that cannot be read does not.
        file.status = StatusOfPath(WideToUtf8(path));
    }
    return file;
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
    // Before the file is waited for, which may take minutes.
    const std::u16string stored = StoredPath(path);
    if (stored.size() > entry_record::kMaxPathUnits) {
        return RejectLongPath(path);
    }
    if (const ResultCode code = SizeAndHash(path, hasher, entry); code != ResultCode::Ok) {
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
