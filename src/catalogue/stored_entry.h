// The entry of one file as stored in a catalogue, and the check of the file against it.
#ifndef SEALKEEPER_CATALOGUE_STORED_ENTRY_H
#define SEALKEEPER_CATALOGUE_STORED_ENTRY_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/result_code.h"
#include "catalogue/hashing/file_hasher.h"
#include "runtime/sha256.h"

namespace sealkeeper {

class StoredEntry;

// Called for a chunk that differed from its digest in two reads; returning true accepts it.
// `positionBytes` is where the chunk ends in the file. `context` is what the caller passed with the
// handler.
using MismatchHandler = bool (*)(const StoredEntry& entry, std::uint64_t positionBytes,
                                 void* context);

// The fields of the record of a file.
struct StoredFields {
    std::uint64_t fileSizeBytes = 0;
    // The index of the first UTF-16 unit after the last '/' of the path, as stored.
    std::uint32_t namePosition = 0;
    // Up to the first zero of its field.
    std::u16string_view path;
    // All digests, one after the other.
    std::span<const std::uint8_t> digests;
};

// A view of the path and digests that it is made from, which must outlive it. Immutable.
class StoredEntry {
  public:
    enum class CheckExtent { SizeAndChunks, SizeOnly };

    explicit StoredEntry(const StoredFields& fields,
                         CheckExtent extent = CheckExtent::SizeAndChunks);
    StoredEntry(const StoredEntry&) = delete;
    StoredEntry& operator=(const StoredEntry&) = delete;
    virtual ~StoredEntry() = default;

    // Checks the file at `path`: its size and, unless the extent is `SizeOnly`, the digests of its
    // first `DigestCount` chunks. Chunks past the end of the file are empty. A file that matches
    // but changed meanwhile is checked once more. Shows progress dots and prints nothing else.
    // Returns `Ok` for a file that matches; `FileVerificationIOError` when `path` is empty, the
    // file cannot be opened or is not a regular file, a chunk cannot be read in two attempts, or
    // the file changed both times; `FileVerificationSizeMismatch` when the size differs;
    // `FileVerificationHashMismatch` when a chunk differs in two reads and `handler`, which may be
    // null, does not accept it. Deliberate quirk: the chunk after a recovered one is not compared,
    // nor is it an error if nothing can be read of it. A chunk is recovered if it matched only in
    // its second read or was accepted. This function and the next two are defined in
    // file_verification.cpp.
    virtual ResultCode VerifyCatalogueFile(const std::wstring& path, MismatchHandler handler,
                                           void* context) const;

    // The same for the next file of `hasher`, which must open it with `OpenFile` at `path`.
    ResultCode VerifyNextFile(const std::wstring& path, FileHasher& hasher, MismatchHandler handler,
                              void* context) const;

    // Opens the file at `path` and tells which of its chunks are to be hashed for the check.
    [[nodiscard]] FileToHash OpenFile(const std::wstring& path) const;

    [[nodiscard]] std::uint64_t FileSizeBytes() const { return fileSizeBytes_; }
    [[nodiscard]] std::uint32_t NamePosition() const { return namePosition_; }
    [[nodiscard]] std::wstring Path() const;
    // The length of the path in UTF-16 units, up to the first zero. An aliased path is stored with
    // four bytes per character, so it appears to end after its first character, and `NamePosition`
    // is past that end if the path has a slash.
    [[nodiscard]] std::size_t PathUnits() const { return pathUnits_; }
    [[nodiscard]] std::uint32_t DigestCount() const { return digestCount_; }
    // `index` is below `DigestCount`.
    [[nodiscard]] std::span<const std::uint8_t, kSha256Bytes> Digest(std::uint32_t index) const;

  private:
    // Raw pointers and small counts, because a catalogue may have millions of entries.
    std::uint64_t fileSizeBytes_;
    const char16_t* path_;
    const std::uint8_t* digests_;
    std::uint32_t namePosition_;
    std::uint32_t digestCount_;
    std::uint16_t pathUnits_;
    CheckExtent extent_;
};

// The entries of a catalogue, in the order of the file. Each keeps all entries of its catalogue,
// and what they view, alive.
using EntryList = std::vector<std::shared_ptr<const StoredEntry>>;

// The memory of an entry itself and of its place in the list.
static_assert(sizeof(StoredEntry) + sizeof(EntryList::value_type) <= 64);

}  // namespace sealkeeper

#endif
