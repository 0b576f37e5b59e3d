#include "catalogue/hash_catalogue.h"

#include <algorithm>
#include <new>
#include <utility>

#include "app/console_log.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_reader.h"
#include "catalogue/catalogue_signature.h"
#include "catalogue/catalogue_writer.h"
#include "catalogue/certificate_path.h"
#include "catalogue/hashing/make_chunk_hasher.h"
#include "platform/converter_watch.h"
#include "platform/text_encoding.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

ResultCode WriteCatalogueOf(const EntryBlock& block, mbedtls_pk_context* privateKey,
                            ByteView crlBlock, const std::wstring& outputPath) {
    std::vector<std::uint8_t> image;
    if (const ResultCode code = BuildCatalogueImage(privateKey, crlBlock, block, image);
        code != ResultCode::Ok) {
        return code;
    }
    return WriteCatalogueImage(outputPath, image);
}

// Runs `operation`. Fails with `CatalogueError`, logged, when memory runs out.
template <typename Operation>
ResultCode ReportLackOfMemory(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        Log(LogLevel::Error, "Not enough memory for the catalogue.\n");
        return ResultCode::CatalogueError;
    }
}

void SortByPath(std::vector<FoundFile>& files) {
    const auto precedes = [](const FoundFile& a, const FoundFile& b) { return a.path < b.path; };
    // The walk goes through each directory from the last name to the first. Reversed, its files are
    // in order, unless a name continues where that of a directory ends, as "a.b" beside "a/c".
    std::reverse(files.begin(), files.end());
    if (!std::is_sorted(files.begin(), files.end(), precedes)) {
        std::sort(files.begin(), files.end(), precedes);
    }
}

}  // namespace

HashCatalogue::HashCatalogue(std::string productId, std::size_t jobs)
    : productId_(std::move(productId)), jobs_(jobs) {}

ResultCode HashCatalogue::CreateCatalogue(mbedtls_pk_context* privateKey,
                                          const std::vector<std::uint8_t>& crlBlock,
                                          std::vector<FoundFile> files,
                                          const std::wstring& outputPath, const AliasMap& aliases) {
    if (files.empty()) {
        return ResultCode::CatalogueError;
    }
    return ReportLackOfMemory([&] {
        SortByPath(files);
        EntryBlock block;
        // Moves the list, so that it is freed before the image is built. With many files it is
        // larger than the block.
        if (const ResultCode code =
                BuildEntryBlock(std::move(files), aliases, MakeChunkHasher(jobs_), block);
            code != ResultCode::Ok) {
            return code;
        }
        return WriteCatalogueOf(block, privateKey, crlBlock, outputPath);
    });
}

ResultCode HashCatalogue::ReadCatalogue(std::vector<std::uint8_t> fileBytes, EntryList& entries) {
    entries.clear();
    return ReportLackOfMemory([&] {
        CatalogueFile file{std::move(fileBytes), {}};
        if (const ResultCode code = ReadCatalogueHeader(file.bytes, file.bytes.size(), file.header);
            code != ResultCode::Ok) {
            return code;
        }
        return ReadCatalogueBody(file, entries);
    });
}

ResultCode HashCatalogue::ReadAndVerifyCatalogue(const std::wstring& cataloguePath,
                                                 ByteView parentBytes, ByteView parentCrlBytes,
                                                 CatalogueContents& contents) {
    contents = {};
    return ReportLackOfMemory([&] {
        const ConverterWatch converter;
        const std::string path = WideToUtf8(cataloguePath);
        if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
            return code;
        }
        // Nothing for an empty path as well.
        const auto certificatePath = CertificatePathOf(path);
        if (!certificatePath) {
            return ResultCode::CatalogueError;
        }
        CatalogueContents read;
        CatalogueFile file;
        if (const ResultCode code = ReadCatalogueFile(path, file); code != ResultCode::Ok) {
            return code;
        }
        if (const ResultCode code = CheckSignature(file.bytes, *certificatePath, parentBytes,
                                                   parentCrlBytes, read.certificateBytes);
            code != ResultCode::Ok) {
            return code;
        }
        if (const ResultCode code = ReadCatalogueBody(file, read.entries); code != ResultCode::Ok) {
            return code;
        }
        const auto crlBlock = CrlBlockOf(file);
        read.crlBlock.assign(crlBlock.begin(), crlBlock.end());
        contents = std::move(read);
        return ResultCode::Ok;
    });
}

ResultCode HashCatalogue::GetUnverifiedCatalogueFileList(std::vector<std::uint8_t> catalogueBytes,
                                                         EntryList& entries) {
    return ReadCatalogue(std::move(catalogueBytes), entries);
}

ResultCode HashCatalogue::CheckSignature(std::span<std::uint8_t> fileBytes,
                                         const std::string& certificatePath, ByteView parentBytes,
                                         ByteView parentCrlBytes,
                                         std::vector<std::uint8_t>& certificateBytes) {
    auto bytes = ReadCertificateBytes(certificatePath);
    if (!bytes) {
        return ResultCode::CertIOError;
    }
    certificateBytes = std::move(*bytes);
    Certificate certificate;
    if (const ResultCode code =
            VerifySigningCertificate(certificateBytes, parentBytes, parentCrlBytes, certificate);
        code != ResultCode::Ok) {
        return code;
    }
    return VerifyCatalogueSignature(&certificate.Get()->pk, fileBytes);
}

ResultCode HashCatalogue::VerifySigningCertificate(ByteView certificateBytes, ByteView parentBytes,
                                                   ByteView parentCrlBytes,
                                                   Certificate& certificate) {
    return sealkeeper::VerifySigningCertificate(BuiltInTrustMaterial(), productId_,
                                                certificateBytes, parentBytes, parentCrlBytes,
                                                certificate);
}

}  // namespace sealkeeper
