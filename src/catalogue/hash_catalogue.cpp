#include "catalogue/hash_catalogue.h"

#include <algorithm>
#include <new>
#include <utility>

#include "app/console_log.h"
#include "catalogue/catalogue_writer.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

ResultCode WriteCatalogueOf(std::vector<std::wstring> files, const AliasMap& aliases,
                            mbedtls_pk_context* privateKey, ByteView crlBlock,
                            const std::wstring& outputPath) {
    std::sort(files.begin(), files.end());
    EntryBlock block;
    if (const ResultCode code = BuildEntryBlock(files, aliases, block); code != ResultCode::Ok) {
        return code;
    }
    // With many files the list takes a third of what the block does; it makes room for the image.
    files.clear();
    files.shrink_to_fit();
    std::vector<std::uint8_t> image;
    if (const ResultCode code = BuildCatalogueImage(privateKey, crlBlock, block, image);
        code != ResultCode::Ok) {
        return code;
    }
    return WriteCatalogueImage(outputPath, image);
}

}  // namespace

HashCatalogue::HashCatalogue(std::string productId) : productId_(std::move(productId)) {}

ResultCode HashCatalogue::CreateCatalogue(mbedtls_pk_context* privateKey,
                                          const std::vector<std::uint8_t>& crlBlock,
                                          std::vector<std::wstring> files,
                                          const std::wstring& outputPath, const AliasMap& aliases) {
    if (files.empty()) {
        return ResultCode::CatalogueError;
    }
    try {
        return WriteCatalogueOf(std::move(files), aliases, privateKey, crlBlock, outputPath);
    } catch (const std::bad_alloc&) {
        Log(LogLevel::Error, "Not enough memory for the catalogue.\n");
        return ResultCode::CatalogueError;
    }
}

ResultCode HashCatalogue::VerifySigningCertificate(ByteView certificateBytes, ByteView parentBytes,
                                                   ByteView parentCrlBytes,
                                                   Certificate& certificate) {
    return sealkeeper::VerifySigningCertificate(BuiltInTrustMaterial(), productId_,
                                                certificateBytes, parentBytes, parentCrlBytes,
                                                certificate);
}

}  // namespace sealkeeper
