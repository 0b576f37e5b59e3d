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

// UTF-16 units, padded with zeros.
using PathField = std::array<char16_t, entry_record::kPathUnits>;

struct CatalogueEntry {
    std::uint64_t fileSizeBytes = 0;
    // The index of the first unit after the last '/' of the path field, 0 when it holds none.
    std::uint32_t namePosition = 0;
    PathField path{};
    // One for each chunk, in file order.
    std::vector<Sha256Digest> digests;
};

// Fills `entry` from the file at the collected `path`, reporting on the console while it hashes. A
// file that is missing counts, deliberately, as an empty one. One that changes while it is being
// hashed is hashed once more, as it is then. Fails with `CatalogueIOError` for an empty path and,
// logged, for a file that changed both times or is gone the second; with `CatalogueError` for a
// path that does not fit its field; and as `HashFileChunks` does.
ResultCode BuildCatalogueEntry(const std::wstring& path, CatalogueEntry& entry);

// The same for the next file of `hasher`, which `OpenCollectedFile` opened. After a failure the
// hasher may not have gone on to that file, and is of no use any more.
ResultCode BuildCatalogueEntry(const std::wstring& path, FileHasher& hasher, CatalogueEntry& entry);

// The form in which the path of a collected file is stored: UTF-16, relative to the game directory
// without "./", '/' as the only separator.
[[nodiscard]] std::u16string StoredFormOf(const std::wstring& path);

// Opens the file at the collected `path` to be hashed in full; `seen` as for `OpenGameFile`.
[[nodiscard]] FileToHash OpenCollectedFile(const std::wstring& path, const FileStatus& seen = {});

// Replaces `digests` by those of the first `sizeBytes` bytes of the file, one for each chunk, and
// shows the progress on one console line. A file that grew in the meantime is hashed up to
// `sizeBytes`. Fails with `FileVerificationIOError` for an empty path or no bytes, `CatalogueError`
// when the file cannot be opened, `CatalogueIOError` when it ends too early; `digests` is then
// incomplete.
ResultCode HashFileChunks(const std::wstring& path, std::uint64_t sizeBytes,
                          std::vector<Sha256Digest>& digests);

// The same for `file`, the current one of `hasher`.
ResultCode HashFileChunks(const std::wstring& path, const FileToHash& file, FileHasher& hasher,
                          std::vector<Sha256Digest>& digests);

// The index of the first unit after the last '/' of `path`, 0 when there is none.
[[nodiscard]] std::uint32_t NamePositionOf(std::span<const char16_t> path);

// Logs that `path` has no room in its field and returns `CatalogueError`.
ResultCode RejectLongPath(const std::wstring& path);

}  // namespace sealkeeper

#endif
