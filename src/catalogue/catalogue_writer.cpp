#include "catalogue/catalogue_writer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/console_log.h"
#include "catalogue/catalogue_format.h"
#include "catalogue/catalogue_signature.h"
#include "catalogue/lzw/lzw_compressor.h"
#include "platform/converter_watch.h"
#include "platform/little_endian.h"
#include "platform/output_file.h"
#include "platform/text_encoding.h"

namespace sealkeeper {
namespace {

void AppendRecord(const CatalogueEntry& entry, std::vector<std::uint8_t>& bytes) {
    std::array<std::uint8_t, entry_record::kFixedBytes> fixed{};
    const std::span<std::uint8_t> record(fixed);
    StoreLittleEndian(entry.fileSizeBytes, record.subspan(entry_record::kFileSizeOffset));
    StoreLittleEndian(entry.namePosition, record.subspan(entry_record::kNamePositionOffset));
    for (std::size_t unit = 0; unit < entry.path.size(); ++unit) {
        StoreLittleEndian(static_cast<std::uint16_t>(entry.path[unit]),
                          record.subspan(entry_record::kPathOffset + unit * sizeof(std::uint16_t)));
    }
    StoreLittleEndian(static_cast<std::uint32_t>(entry.digests.size()),
                      record.subspan(entry_record::kDigestCountOffset));
    bytes.insert(bytes.end(), fixed.begin(), fixed.end());
    for (const Sha256Digest& digest : entry.digests) {
        bytes.insert(bytes.end(), digest.begin(), digest.end());
    }
}

ResultCode RequireStorable(std::size_t length, const char* message) {
    if (length > kMaxStoredLength) {
        Log(LogLevel::Error, "%s\n", message);
        return ResultCode::CatalogueError;
    }
    return ResultCode::Ok;
}

void StoreHeader(std::span<std::uint8_t> image, std::size_t crlLength, const EntryBlock& block) {
    namespace header = catalogue_header;
    const auto storeLength = [&image](std::size_t length, std::size_t offset) {
        StoreLittleEndian(static_cast<std::uint32_t>(length), image.subspan(offset));
    };
    std::copy(signed_file::kMagic.begin(), signed_file::kMagic.end(),
              image.begin() + header::kMagicOffset);
    StoreLittleEndian(header::kFormatVersion, image.subspan(header::kFormatVersionOffset));
    StoreLittleEndian(header::kSignatureLayout, image.subspan(header::kSignatureLayoutOffset));
    storeLength(crlLength, header::kCrlLengthOffset);
    storeLength(block.compressed.size(), header::kCompressedLengthOffset);
    storeLength(block.uncompressedBytes, header::kRawLengthOffset);
    storeLength(block.entryCount, header::kEntryCountOffset);
}

// The signature covers the image with its signature area and length still zero.
ResultCode SignImage(mbedtls_pk_context* privateKey, std::span<std::uint8_t> image) {
    std::size_t signatureLength = 0;
    const ResultCode code = SignCatalogueImage(
        privateKey, image, image.subspan(catalogue_header::kSignatureOffset).data(),
        &signatureLength);
    StoreLittleEndian(static_cast<std::uint32_t>(signatureLength),
                      image.subspan(catalogue_header::kSignatureLengthOffset));
    return code;
}

// Compresses the records of a block as they are added, many at a time.
class EntryBlockBuilder {
  public:
    // `block` must outlive this. The memory for `fileCount` entries is estimated: most files have
    // one chunk.
    EntryBlockBuilder(EntryBlock& block, std::size_t fileCount)
        : block_(block),
          compressor_(block.compressed,
                      fileCount * (entry_record::kFixedBytes + entry_record::kDigestBytes)) {}

    // Fails with `CatalogueError`, logged, when the block is larger than its length can say.
    ResultCode Add(const CatalogueEntry& entry) {
        AppendRecord(entry, records_);
        block_.uncompressedBytes +=
            entry_record::kFixedBytes + entry.digests.size() * entry_record::kDigestBytes;
        ++block_.entryCount;
        if (records_.size() >= kRecordsAtOnceBytes) {
            compressor_.Append(records_);
            records_.clear();
        }
        return RequireStorable(block_.uncompressedBytes,
                               "Too large for the catalogue: the entry block.");
    }

    // Call once, after all entries were added. Only then `block` is complete.
    void Finish() {
        compressor_.Append(records_);
        compressor_.Finish();
    }

  private:
    EntryBlock& block_;
    LzwCompressor compressor_;
    std::vector<std::uint8_t> records_;
};

}  // namespace

ResultCode BuildEntryBlock(std::vector<FoundFile> files, const AliasMap& aliases,
                           std::unique_ptr<ChunkHasher> chunks, EntryBlock& block) {
    const ConverterWatch converter;
    EntryBlockBuilder builder(block, files.size());
    std::size_t current = 0;
    FileHasher hasher(
        files.size(),
        [&](std::size_t index) {
            // A file opened ahead may use the status that the walk saw: it is checked again when
            // its turn comes.
            return OpenCollectedFile(files[index].path,
                                     index == current ? FileStatus{} : files[index].status);
        },
        std::move(chunks));
    CatalogueEntry entry;
    for (; current < files.size(); ++current) {
        if (const ResultCode code = BuildCatalogueEntry(files[current].path, hasher, entry);
            code != ResultCode::Ok) {
            return code;
        }
        if (const ResultCode code = ApplyPathAlias(aliases, entry); code != ResultCode::Ok) {
            return code;
        }
        if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
            return code;
        }
        if (const ResultCode code = builder.Add(entry); code != ResultCode::Ok) {
            return code;
        }
    }
    builder.Finish();
    return ResultCode::Ok;
}

ResultCode BuildCatalogueImage(mbedtls_pk_context* privateKey,
                               std::span<const std::uint8_t> crlBlock, const EntryBlock& block,
                               std::vector<std::uint8_t>& image) {
    // Each record has more than one byte, so the count fits if the entry block does.
    const std::array<std::pair<std::size_t, const char*>, 2> lengths = {{
        {crlBlock.size(), "Too large for the catalogue: the certificate revocation list."},
        {block.compressed.size(), "Too large for the catalogue: the compressed entry block."},
    }};
    for (const auto& [length, message] : lengths) {
        if (const ResultCode code = RequireStorable(length, message); code != ResultCode::Ok) {
            return code;
        }
    }
    // Allocated once: growing it would need memory for the old and the new copy.
    image.assign(catalogue_header::kSizeBytes + crlBlock.size() + block.compressed.size(), 0);
    const auto body = image.begin() + catalogue_header::kSizeBytes;
    std::copy(block.compressed.begin(), block.compressed.end(),
              std::copy(crlBlock.begin(), crlBlock.end(), body));
    StoreHeader(image, crlBlock.size(), block);
    return SignImage(privateKey, image);
}

ResultCode WriteCatalogueImage(const std::wstring& outputPath,
                               std::span<const std::uint8_t> image) {
    const ConverterWatch converter;
    const std::string pathUtf8 = WideToUtf8(outputPath);
    if (const ResultCode code = converter.RequireSound(); code != ResultCode::Ok) {
        return code;
    }
    switch (WriteWholeFile(pathUtf8, image)) {
        case WriteOutcome::Written:
            return ResultCode::Ok;
        case WriteOutcome::OpenFailed:
            Log(LogLevel::Error, "Failed to open file: '%s'.\n", pathUtf8.c_str());
            break;
        case WriteOutcome::WriteFailed:
        case WriteOutcome::CloseFailed:
            Log(LogLevel::Error, "Error writing to file stream: '%s'.\n", pathUtf8.c_str());
            break;
    }
    return ResultCode::CatalogueIOError;
}

}  // namespace sealkeeper
