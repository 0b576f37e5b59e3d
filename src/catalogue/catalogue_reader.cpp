#include "catalogue/catalogue_reader.h"

#include <utility>

#include "catalogue/catalogue_format.h"
#include "catalogue/entry_block_reader.h"
#include "platform/little_endian.h"

namespace sealkeeper {

ResultCode ReadCatalogueHeader(std::span<const std::uint8_t> start, std::uint64_t fileSizeBytes,
                               CatalogueHeader& header, InvalidReason* reason) {
    namespace format = catalogue_header;
    if (start.size() < format::kSizeBytes) {
        return FailInvalid({InvalidField::FileLength, InvalidPlace::File, start.size(),
                            start.size(), format::kSizeBytes},
                           reason);
    }
    const auto load = [start](std::size_t offset) {
        return LoadLittleEndian<std::uint32_t>(start.subspan(offset));
    };
    if (!signed_file::HasMagic(start)) {
        return FailInvalid({InvalidField::Magic, InvalidPlace::File, format::kMagicOffset,
                            load(format::kMagicOffset), signed_file::kMagicNumber},
                           reason);
    }
    const auto version =
        LoadLittleEndian<std::uint16_t>(start.subspan(format::kFormatVersionOffset));
    if (version != format::kFormatVersion) {
        return FailInvalid({InvalidField::FormatVersion, InvalidPlace::File,
                            format::kFormatVersionOffset, version, format::kFormatVersion},
                           reason);
    }
    const std::uint64_t crlLength = load(format::kCrlLengthOffset);
    const std::uint64_t compressedLength = load(format::kCompressedLengthOffset);
    const std::uint64_t afterHeader = fileSizeBytes - format::kSizeBytes;
    if (afterHeader != crlLength + compressedLength) {
        return FailInvalid({InvalidField::BlockLengths, InvalidPlace::File,
                            format::kCrlLengthOffset, crlLength + compressedLength, afterHeader},
                           reason);
    }
    header = {static_cast<std::size_t>(crlLength), static_cast<std::size_t>(compressedLength),
              load(format::kEntryCountOffset)};
    return ResultCode::Ok;
}

ResultCode ReadCatalogueFile(const std::string& path, CatalogueFile& file) {
    auto opened = OpenSizedFile(path);
    if (!opened) {
        return ResultCode::CatalogueIOError;
    }
    file = {};
    return ReadCatalogueFile(std::move(*opened), file);
}

ResultCode ReadCatalogueFile(SizedFile opened, CatalogueFile& file, InvalidReason* reason) {
    if (!ReadOn(opened, catalogue_header::kSizeBytes, file.bytes)) {
        return ResultCode::CatalogueIOError;
    }
    if (const ResultCode code =
            ReadCatalogueHeader(file.bytes, opened.sizeBytes, file.header, reason);
        code != ResultCode::Ok) {
        return code;
    }
    return ReadOn(opened, opened.sizeBytes, file.bytes) ? ResultCode::Ok
                                                        : ResultCode::CatalogueIOError;
}

std::span<const std::uint8_t> CrlBlockOf(const CatalogueFile& file) {
    return std::span(file.bytes).subspan(catalogue_header::kSizeBytes, file.header.crlLength);
}

std::span<const std::uint8_t> CompressedBlockOf(const CatalogueFile& file) {
    return std::span(file.bytes).last(file.header.compressedLength);
}

ResultCode ReadCatalogueBody(const CatalogueFile& file, EntryList& entries) {
    return ReadEntryBlock(CompressedBlockOf(file), file.header.entryCount, entries);
}

}  // namespace sealkeeper
