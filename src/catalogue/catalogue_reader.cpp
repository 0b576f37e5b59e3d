#include "catalogue/catalogue_reader.h"

#include <utility>

#include "catalogue/catalogue_format.h"
#include "catalogue/entry_block_reader.h"
#include "platform/little_endian.h"

namespace sealkeeper {

ResultCode ReadCatalogueHeader(std::span<const std::uint8_t> start, std::uint64_t fileSizeBytes,
                               CatalogueHeader& header) {
    namespace format = catalogue_header;
    if (start.size() < format::kSizeBytes || !signed_file::HasMagic(start)) {
        return ResultCode::FileInvalid;
    }
    if (LoadLittleEndian<std::uint16_t>(start.subspan(format::kFormatVersionOffset)) !=
        format::kFormatVersion) {
        return ResultCode::FileInvalid;
    }
    const auto load = [start](std::size_t offset) {
        return LoadLittleEndian<std::uint32_t>(start.subspan(offset));
    };
    const std::uint64_t crlLength = load(format::kCrlLengthOffset);
    const std::uint64_t compressedLength = load(format::kCompressedLengthOffset);
    if (fileSizeBytes - format::kSizeBytes != crlLength + compressedLength) {
        return ResultCode::FileInvalid;
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

ResultCode ReadCatalogueFile(SizedFile opened, CatalogueFile& file) {
    if (!ReadOn(opened, catalogue_header::kSizeBytes, file.bytes)) {
        return ResultCode::CatalogueIOError;
    }
    if (const ResultCode code = ReadCatalogueHeader(file.bytes, opened.sizeBytes, file.header);
        code != ResultCode::Ok) {
        return code;
    }
    return ReadOn(opened, opened.sizeBytes, file.bytes) ? ResultCode::Ok
                                                        : ResultCode::CatalogueIOError;
}

std::span<const std::uint8_t> CrlBlockOf(const CatalogueFile& file) {
    return std::span(file.bytes).subspan(catalogue_header::kSizeBytes, file.header.crlLength);
}

ResultCode ReadCatalogueBody(const CatalogueFile& file, EntryList& entries) {
    return ReadEntryBlock(std::span(file.bytes).last(file.header.compressedLength),
                          file.header.entryCount, entries);
}

}  // namespace sealkeeper
