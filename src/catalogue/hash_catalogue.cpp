#include "catalogue/hash_catalogue.h"

#include <algorithm>
#include <new>
#include <utility>

#include "app/console_log.h"
#include "catalogue/catalogue_reader.h"
#include "catalogue/catalogue_signature.h"
#include "catalogue/catalogue_writer.h"
#include "platform/file_io.h"
#include "platform/text_encoding.h"
#include "runtime/trust_material.h"

namespace sealkeeper {
namespace {

constexpr const wchar_t* kCertificateExtension = L".cer";

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

// Runs `operation`, in which memory may run out.
template <typename Operation>
ResultCode ReportLackOfMemory(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        Log(LogLevel::Error, "Not enough memory for the catalogue.\n");
        return ResultCode::CatalogueError;
    }
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
    return ReportLackOfMemory([&] {
        return WriteCatalogueOf(std::move(files), aliases, privateKey, crlBlock, outputPath);
    });
}

ResultCode HashCatalogue::ReadCatalogue(std::vector<std::uint8_t> fileBytes, EntryList& entries) {
    constexpr auto kNoSignatureCheck = nullptr;
    return ReportLackOfMemory([&] {
        std::vector<std::uint8_t> crlBlock;
        return ParseCatalogueImage(fileBytes, kNoSignatureCheck, crlBlock, entries);
    });
}

ResultCode HashCatalogue::ReadAndVerifyCatalogue(const std::wstring& cataloguePath,
                                                 ByteView parentBytes, ByteView parentCrlBytes,
                                                 CatalogueContents& contents) {
    // An empty path has none, either.
    const std::size_t extension = cataloguePath.rfind(L'.');
    if (extension == std::wstring::npos) {
        return ResultCode::CatalogueError;
    }
    const std::string certificatePath =
        WideToUtf8(cataloguePath.substr(0, extension) + kCertificateExtension);
    return ReportLackOfMemory([&] {
        auto fileBytes = ReadWholeFile(WideToUtf8(cataloguePath));
        if (!fileBytes) {
            return ResultCode::CatalogueIOError;
        }
        const auto checkSignature = [&](std::span<std::uint8_t> bytes) {
            return CheckSignature(bytes, certificatePath, parentBytes, parentCrlBytes,
                                  contents.certificateBytes);
        };
        return ParseCatalogueImage(*fileBytes, checkSignature, contents.crlBlock, contents.entries);
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
    auto bytes = ReadWholeFile(certificatePath);
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
