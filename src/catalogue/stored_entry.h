// One file's entry as a catalogue holds it, and the check of the file against it.
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

// Asked about a chunk that differs from its digest on two reads: true accepts it. `positionBytes`
// is where the chunk ends in the file, `context` what the caller of the check gave with the
// handler.
using MismatchHandler = bool (*)(const StoredEntry& entry, std::uint64_t positionBytes,
                                 void* context);

// What the record of a file holds.
struct StoredFields {
    std::uint64_t fileSizeBytes = 0;
    // The index of the first UTF-16 unit after the last '/' of the path, as stored.
    std::uint32_t namePosition = 0;
    // Up to the first zero of its field.
    std::u16string_view path;
    // One after the other.
    std::span<const std::uint8_t> digests;
};

// A view of the path and the digests that it is made of, which must outlive it. Never changes.
class StoredEntry {
  public:
    enum class CheckExtent { SizeAndChunks, SizeOnly };

    explicit StoredEntry(const StoredFields& fields,
                         CheckExtent extent = CheckExtent::SizeAndChunks);
    StoredEntry(const StoredEntry&) = delete;
    StoredEntry& operator=(const StoredEntry&) = delete;
    virtual ~StoredEntry() = default;

    // Checks the file at `path`: its size and, unless that is all to check, the digests of its
    // first `DigestCount` chunks, of which those past the end of the file have no bytes. A file
    // that matches but changed meanwhile is checked once more. Shows progress dots and prints
    // nothing else. Returns `Ok` for a file that matches; `FileVerificationIOError` when `path` is
    // empty, the file cannot be opened or has no content (a directory, a FIFO, a device), a chunk
    // cannot be read twice, or the file changed both times; `FileVerificationSizeMismatch`;
    // `FileVerificationHashMismatch` when a chunk differs on two reads and `handler`, which may be
    // null, does not accept it. After a chunk that matched only on its second read, or was
    // accepted, the next one is deliberately not compared, nor missed when there is nothing of it
    // to read. This one and the next two are defined in file_verification.cpp.
    virtual ResultCode VerifyCatalogueFile(const std::wstring& path, MismatchHandler handler,
                                           void* context) const;

    // The same for the next file of `hasher`, which `OpenFile` opened at `path`.
    ResultCode VerifyNextFile(const std::wstring& path, FileHasher& hasher, MismatchHandler handler,
                              void* context) const;

    // Opens the file at `path` and tells which of its chunks are to be hashed for the check.
    [[nodiscard]] FileToHash OpenFile(const std::wstring& path) const;

    [[nodiscard]] std::uint64_t FileSizeBytes() const { return fileSizeBytes_; }
    [[nodiscard]] std::uint32_t NamePosition() const { return namePosition_; }
    [[nodiscard]] std::wstring Path() const;
    // In UTF-16. `NamePosition` is beyond it for an aliased path with a slash: stored at four bytes
    // a character, that has a zero after the first.
    [[nodiscard]] std::size_t PathUnits() const { return pathUnits_; }
    [[nodiscard]] std::uint32_t DigestCount() const { return digestCount_; }
    // `index` is below `DigestCount`.
    [[nodiscard]] std::span<const std::uint8_t, kSha256Bytes> Digest(std::uint32_t index) const;

  private:
    // Pointers and counts as small as they can be: a catalogue may have millions of entries.
    std::uint64_t fileSizeBytes_;
    const char16_t* path_;
    const std::uint8_t* digests_;
    std::uint32_t namePosition_;
    std::uint32_t digestCount_;
    std::uint16_t pathUnits_;
    CheckExtent extent_;
};

// The entries of a catalogue, in file order. Each keeps what it views alive, and with it all of its
// catalogue.
using EntryList = std::vector<std::shared_ptr<const StoredEntry>>;

}  // namespace sealkeeper

#endif
