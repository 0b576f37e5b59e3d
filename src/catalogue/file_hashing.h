// SHA-256 digests of a file's chunks.
#ifndef SEALKEEPER_CATALOGUE_FILE_HASHING_H
#define SEALKEEPER_CATALOGUE_FILE_HASHING_H

#include <cstdint>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/hashing/file_hasher.h"
#include "runtime/sha256.h"

namespace sealkeeper {

// Replaces `digests` by those of the first `sizeBytes` bytes of the file, one for each chunk, and
// shows the progress on one console line. A file that grew in the meantime is hashed up to
// `sizeBytes`. Fails with `FileVerificationIOError` for an empty path or no bytes, `CatalogueError`
// when the file cannot be opened, `CatalogueIOError` when it ends too early; `digests` is then
// incomplete.
ResultCode HashFileChunks(const std::wstring& path, std::uint64_t sizeBytes,
                          std::vector<Sha256Digest>& digests);

// The same for `file`, the current one of `hasher`, which was opened for it.
ResultCode HashFileChunks(FileHasher& hasher, const FileToHash& file, const std::wstring& path,
                          std::vector<Sha256Digest>& digests);

// Opens the file at `path` for hashing all of the size that it has now.
[[nodiscard]] FileToHash OpenFileToHash(const std::wstring& path);

}  // namespace sealkeeper

#endif
