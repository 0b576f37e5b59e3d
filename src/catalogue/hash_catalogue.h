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

// What a catalogue file gives that was read and found good.
struct CatalogueContents {
    EntryList entries;
    // As it was given to the writer.
    std::vector<std::uint8_t> crlBlock;
    // The certificate that the signature was checked with.
    std::vector<std::uint8_t> certificateBytes;
};

// Holds nothing between calls but the product id that signing certificates must name, and how many
// threads hash.
class HashCatalogue {
  public:
    // `jobs` are those of `MakeChunkHasher`.
    explicit HashCatalogue(std::string productId, std::size_t jobs = 1);
    HashCatalogue(const HashCatalogue&) = delete;
    HashCatalogue& operator=(const HashCatalogue&) = delete;
    virtual ~HashCatalogue() = default;

    // Hashes `files`, as they are when their turn comes, sorted by the code points of their paths,
    // and writes the signed catalogue to `outputPath`, with `crlBlock` in it as it stands. Fails
    // with `CatalogueError` when `files` is empty and, logged, when memory runs out; otherwise as
    // the steps in catalogue_writer.h do. Unless writing itself fails, nothing is written then.
    virtual ResultCode CreateCatalogue(mbedtls_pk_context* privateKey,
                                       const std::vector<std::uint8_t>& crlBlock,
                                       std::vector<FoundFile> files, const std::wstring& outputPath,
                                       const AliasMap& aliases);

    // Reads the catalogue `fileBytes` into `entries`, as they stand: the signature is not checked.
    // Fails with `FileInvalid`, and with `CatalogueError`, logged, when memory runs out; `entries`
    // is empty then.
    virtual ResultCode ReadCatalogue(std::vector<std::uint8_t> fileBytes, EntryList& entries);

    // Reads the catalogue file at `cataloguePath` into `contents`. Its signature is checked with
    // the certificate of the same name and the extension ".cer", which is checked first, against
    // the trust material or the parent of a mod's certificate; see `VerifySigningCertificate`.
    // Fails with `CatalogueError` when the path is empty or has no '.', or, logged, when memory
    // runs out or the system fails to convert the path; `CatalogueIOError` when the file cannot be
    // read; `FileInvalid`; `CertIOError` when the certificate cannot be read; the mapped error when
    // certificate or signature are not good. `contents` is empty then.
    virtual ResultCode ReadAndVerifyCatalogue(const std::wstring& cataloguePath,
                                              ByteView parentBytes, ByteView parentCrlBytes,
                                              CatalogueContents& contents);

    // Checks a signing certificate against the built-in trust material for the product id; see the
    // free function of the same name.
    virtual ResultCode VerifySigningCertificate(ByteView certificateBytes, ByteView parentBytes,
                                                ByteView parentCrlBytes, Certificate& certificate);

    // The same as `ReadCatalogue`: nothing is verified.
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
