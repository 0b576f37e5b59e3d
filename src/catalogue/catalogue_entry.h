// One file's entry in a hash catalogue: its size, its path in the stored form, and the digests of
// its chunks.
#ifndef SEALKEEPER_CATALOGUE_CATALOGUE_ENTRY_H
#define SEALKEEPER_CATALOGUE_CATALOGUE_ENTRY_H

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/hashing/file_hasher.h"
#include "runtime/sha256.h"

namespace sealkeeper {

static_assert(kSha256Bytes == entry_record::kDigestBytes);

// UTF-16 units, zero-padded.
using PathField = std::array<char16_t, entry_record::kPathUnits>;

struct CatalogueEntry {
    std::uint64_t fileSizeBytes = 0;
    // The index of the first unit after the last '/' of the path field; 0 when it has none.
    std::uint32_t namePosition = 0;
    PathField path{};
    // One for each chunk, in file order.
    std::vector<Sha256Digest> digests;
};

// Fills `entry` from the file at the collected `path`, reporting on the console while it hashes.
// Deliberate quirk: a missing file counts as an empty one. A file that changes while it is hashed
// is hashed once more. Fails with `CatalogueIOError` for an empty path and, logged, for a file
// whose status the system fails to tell, or that changed both times or was gone the second time;
// with `CatalogueError`, logged, for a path that does not fit its field; and as `HashFileChunks`
// does.
ResultCode BuildCatalogueEntry(const std::wstring& path, CatalogueEntry& entry);

// The same for the next file of `hasher`, which must open its files with `OpenCollectedFile`. After
// a failure the hasher may not have moved on to that file and must not be used again.
ResultCode BuildCatalogueEntry(const std::wstring& path, FileHasher& hasher, CatalogueEntry& entry);

// The stored form of the path of a collected file: UTF-16, relative to the game directory without
// "./", with '/' as the only separator.
[[nodiscard]] std::u16string StoredFormOf(const std::wstring& path);

// Opens the file at the collected `path`, to be hashed in full. `seen` is that of `OpenGameFile`.
[[nodiscard]] FileToHash OpenCollectedFile(const std::wstring& path, const FileStatus& seen = {});

// Replaces `digests` by those of the first `sizeBytes` bytes of the file, one for each chunk, and
// shows progress on one console line. Fails with `FileVerificationIOError` for an empty path or
// when `sizeBytes` is 0, `CatalogueError` when the file cannot be opened, `CatalogueIOError` when
// it cannot be read or ends too early; then `digests` is incomplete.
ResultCode HashFileChunks(const std::wstring& path, std::uint64_t sizeBytes,
                          std::vector<Sha256Digest>& digests);

// The same for `file`, the current one of `hasher`.
ResultCode HashFileChunks(const std::wstring& path, const FileToHash& file, FileHasher& hasher,
                          std::vector<Sha256Digest>& digests);

// The index of the first unit after the last '/' of `path`; 0 when it has none.
[[nodiscard]] std::uint32_t NamePositionOf(std::span<const char16_t> path);

// Logs that `path` does not fit its field and returns `CatalogueError`.
ResultCode RejectLongPath(const std::wstring& path);

}  // namespace sealkeeper

#endif
