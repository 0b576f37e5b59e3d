#include "catalogue/catalogue_reader.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "catalogue/catalogue_format.h"
#include "catalogue/lzw_decompressor.h"
#include "platform/little_endian.h"

namespace sealkeeper {
namespace {

struct Header {
    std::size_t crlLength;
    std::size_t compressedLength;
    std::uint32_t entryCount;
};

// Nothing when the file has no header of this format or its lengths do not add up.
std::optional<Header> ReadHeader(std::span<const std::uint8_t> file) {
    namespace header = catalogue_header;
    if (file.size() < header::kSizeBytes ||
        !std::equal(signed_file::kMagic.begin(), signed_file::kMagic.end(),
                    file.begin() + header::kMagicOffset)) {
        return std::nullopt;
    }
    if (LoadLittleEndian<std::uint16_t>(file.subspan(header::kFormatVersionOffset)) !=
        header::kFormatVersion) {
        return std::nullopt;
    }
    const auto load = [file](std::size_t offset) {
        return LoadLittleEndian<std::uint32_t>(file.subspan(offset));
    };
    const std::uint64_t crlLength = load(header::kCrlLengthOffset);
    const std::uint64_t compressedLength = load(header::kCompressedLengthOffset);
    if (file.size() - header::kSizeBytes != crlLength + compressedLength) {
        return std::nullopt;
    }
    return Header{static_cast<std::size_t>(crlLength), static_cast<std::size_t>(compressedLength),
                  load(header::kEntryCountOffset)};
}

// Cuts the next record off the front of `unread`. Nothing, with `unread` as it was, when it is not
// whole.
std::optional<std::span<const std::uint8_t>> TakeRecord(std::span<const std::uint8_t>& unread) {
    if (unread.size() < entry_record::kFixedBytes) {
        return std::nullopt;
    }
    const std::size_t digestCount =
        LoadLittleEndian<std::uint32_t>(unread.subspan(entry_record::kDigestCountOffset));
    if (digestCount > (unread.size() - entry_record::kFixedBytes) / entry_record::kDigestBytes) {
        return std::nullopt;
    }
    const auto record =
        unread.first(entry_record::kFixedBytes + digestCount * entry_record::kDigestBytes);
    unread = unread.subspan(record.size());
    return record;
}

// What the block holds behind its last record is not looked at.
ResultCode ReadEntries(const SharedEntryBlock& block, std::uint32_t entryCount,
                       EntryList& entries) {
    std::span<const std::uint8_t> unread(*block);
    for (std::uint32_t i = 0; i < entryCount; ++i) {
        const auto record = TakeRecord(unread);
        if (!record) {
            entries.clear();
            return ResultCode::FileInvalid;
        }
        entries.push_back(std::make_shared<StoredEntry>(block, *record));
    }
    return ResultCode::Ok;
}

}  // namespace

ResultCode ParseCatalogueImage(std::span<std::uint8_t> fileBytes,
                               const SignatureCheck& checkSignature,
                               std::vector<std::uint8_t>& crlBlock, EntryList& entries) {
    crlBlock.clear();
    entries.clear();
    const auto header = ReadHeader(fileBytes);
    if (!header) {
        return ResultCode::FileInvalid;
    }
    if (checkSignature) {
        if (const ResultCode code = checkSignature(fileBytes); code != ResultCode::Ok) {
            return code;
        }
    }
    const auto body = fileBytes.subspan(catalogue_header::kSizeBytes);
    const auto crl = body.first(header->crlLength);
    crlBlock.assign(crl.begin(), crl.end());
    auto block = std::make_shared<std::vector<std::uint8_t>>();
    if (!DecompressLzw(body.last(header->compressedLength), *block)) {
        return ResultCode::FileInvalid;
    }
    return ReadEntries(std::move(block), header->entryCount, entries);
}

}  // namespace sealkeeper
