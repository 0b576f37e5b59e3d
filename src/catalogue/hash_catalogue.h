// The tool's main product: one signed file that lists every file of a game with its size and the
// digests of its chunks.
#ifndef SEALKEEPER_CATALOGUE_HASH_CATALOGUE_H
#define SEALKEEPER_CATALOGUE_HASH_CATALOGUE_H

#include <mbedtls/pk.h>

#include <cstdint>
#include <string>
#include <vector>

#include "app/result_code.h"
#include "catalogue/path_alias.h"
#include "runtime/certificate_trust.h"

namespace sealkeeper {

// Holds nothing between calls but the product id that signing certificates must name.
class HashCatalogue {
  public:
    explicit HashCatalogue(std::string productId);
    HashCatalogue(const HashCatalogue&) = delete;
    HashCatalogue& operator=(const HashCatalogue&) = delete;
    virtual ~HashCatalogue() = default;

    // Hashes `files`, which are sorted first by the code points of their paths, and writes the
    // signed catalogue to `outputPath`, with `crlBlock` in it as it stands. Fails with
    // `CatalogueError` when `files` is empty or memory runs out, otherwise as the steps in
    // catalogue_writer.h do; unless writing itself fails, nothing is written then.
    virtual ResultCode CreateCatalogue(mbedtls_pk_context* privateKey,
                                       const std::vector<std::uint8_t>& crlBlock,
                                       std::vector<std::wstring> files,
                                       const std::wstring& outputPath, const AliasMap& aliases);

    // Checks a signing certificate against the built-in trust material for the product id; see the
    // free function of the same name.
    virtual ResultCode VerifySigningCertificate(ByteView certificateBytes, ByteView parentBytes,
                                                ByteView parentCrlBytes, Certificate& certificate);

  private:
    std::string productId_;
};

}  // namespace sealkeeper

#endif
