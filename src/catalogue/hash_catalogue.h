// The tool's main product: one signed file that lists every file of a game with its size and the
// digests of its chunks.
#ifndef SEALKEEPER_CATALOGUE_HASH_CATALOGUE_H
#define SEALKEEPER_CATALOGUE_HASH_CATALOGUE_H

#include <mbedtls/pk.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/path_alias.h"
#include "catalogue/stored_entry.h"
#include "platform/found_file.h"
#include "runtime/certificate_trust.h"

namespace sealkeeper {

// The content of a catalogue file that was read and verified.
struct CatalogueContents {
    EntryList entries;
    // The revocation-list block as it was given to the writer.
    std::vector<std::uint8_t> crlBlock;
    // The certificate that the signature was checked with.
    std::vector<std::uint8_t> certificateBytes;
};

// Keeps only the product id that signing certificates must name, and how many threads hash.
class HashCatalogue {
  public:
    // `jobs` is that of `MakeChunkHasher`.
    explicit HashCatalogue(std::string productId, std::size_t jobs = 1);
    HashCatalogue(const HashCatalogue&) = delete;
    HashCatalogue& operator=(const HashCatalogue&) = delete;
    virtual ~HashCatalogue() = default;

    // Hashes `files` in the order of the code points of their paths, each as it is when its turn
    // comes, and writes the signed catalogue, with `crlBlock` unchanged, to `outputPath`. Fails
    // with `CatalogueError` when `files` is empty and, logged, when memory runs out; otherwise as
    // the steps in catalogue_writer.h do. Nothing is written unless everything before the writing
    // succeeded.
    virtual ResultCode CreateCatalogue(mbedtls_pk_context* privateKey,
                                       const std::vector<std::uint8_t>& crlBlock,
                                       std::vector<FoundFile> files, const std::wstring& outputPath,
                                       const AliasMap& aliases);

    // Reads the catalogue `fileBytes` into `entries` without checking its signature. Fails with
    // `FileInvalid`, and with `CatalogueError`, logged, when memory runs out; then `entries` is
    // empty.
    virtual ResultCode ReadCatalogue(std::vector<std::uint8_t> fileBytes, EntryList& entries);

    // Reads the catalogue file at `cataloguePath` into `contents`. Its signature is checked with
    // the certificate of the same name and the extension ".cer". That certificate is checked first,
    // against the trust material or, for a mod, its parent; see `VerifySigningCertificate`. Fails
    // with `CatalogueError` when the path is empty or has no '.' and, logged, when memory runs out
    // or the system fails to convert the path; with `CatalogueIOError` when the file cannot be
    // read; with `FileInvalid` when it is malformed; with `CertIOError` when the certificate cannot
    // be read; with the mapped error when the certificate or the signature does not verify. Then
    // `contents` is empty.
    virtual ResultCode ReadAndVerifyCatalogue(const std::wstring& cataloguePath,
                                              ByteView parentBytes, ByteView parentCrlBytes,
                                              CatalogueContents& contents);

    // Checks a signing certificate for the product id against the built-in trust material; see the
    // free function of the same name.
    virtual ResultCode VerifySigningCertificate(ByteView certificateBytes, ByteView parentBytes,
                                                ByteView parentCrlBytes, Certificate& certificate);

    // The same as `ReadCatalogue`.
    ResultCode GetUnverifiedCatalogueFileList(std::vector<std::uint8_t> catalogueBytes,
                                              EntryList& entries);

  private:
    ResultCode CheckSignature(std::span<std::uint8_t> fileBytes, const std::string& certificatePath,
                              ByteView parentBytes, ByteView parentCrlBytes,
                              std::vector<std::uint8_t>& certificateBytes);

    std::string productId_;
    std::size_t jobs_;
};

}  // namespace sealkeeper

#endif
