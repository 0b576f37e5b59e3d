#include "catalogue/catalogue_reader.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>
#include <utility>

#include "catalogue/catalogue_format.h"
#include "catalogue/lzw/lzw_decompressor.h"
#include "catalogue/lzw/lzw_format.h"
#include "platform/file_io.h"
#include "platform/little_endian.h"

namespace sealkeeper {
namespace {

static_assert(lzw::kMaxUncompressedBytes == kMaxStoredLength);

struct Header {
    std::size_t crlLength;
    std::size_t compressedLength;
    std::uint32_t entryCount;
};

// The header that `start` begins with. Nothing when there is none of this format or its lengths do
// not add up to `fileSizeBytes`.
std::optional<Header> ReadHeader(std::span<const std::uint8_t> start, std::uint64_t fileSizeBytes) {
    namespace header = catalogue_header;
    if (start.size() < header::kSizeBytes || !signed_file::HasMagic(start)) {
        return std::nullopt;
    }
    if (LoadLittleEndian<std::uint16_t>(start.subspan(header::kFormatVersionOffset)) !=
        header::kFormatVersion) {
        return std::nullopt;
    }
    const auto load = [start](std::size_t offset) {
        return LoadLittleEndian<std::uint32_t>(start.subspan(offset));
    };
    const std::uint64_t crlLength = load(header::kCrlLengthOffset);
    const std::uint64_t compressedLength = load(header::kCompressedLengthOffset);
    if (fileSizeBytes - header::kSizeBytes != crlLength + compressedLength) {
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

// The entries of a catalogue and what they view, which they own together: with an owner for each of
// them, small files would take a quarter more memory.
struct SharedEntries {
    std::vector<std::uint8_t> block;
    // A deque, so that references to its elements last.
    std::deque<StoredEntry> entries;
};

// What the block holds behind its last record is not looked at.
ResultCode ReadEntries(const std::shared_ptr<SharedEntries>& shared, std::uint32_t entryCount,
                       EntryList& entries) {
    std::span<const std::uint8_t> unread(shared->block);
    // The block is known to have room for so many.
    entries.reserve(entryCount);
    for (std::uint32_t i = 0; i < entryCount; ++i) {
        const auto record = TakeRecord(unread);
        if (!record) {
            return ResultCode::FileInvalid;
        }
        entries.emplace_back(shared, &shared->entries.emplace_back(*record));
    }
    return ResultCode::Ok;
}

ResultCode ReadBody(std::span<const std::uint8_t> file, const Header& header,
                    ParsedCatalogue& catalogue) {
    const auto body = file.subspan(catalogue_header::kSizeBytes);
    const std::uint64_t minimumBytes = std::uint64_t{header.entryCount} * entry_record::kFixedBytes;
    const auto shared = std::make_shared<SharedEntries>();
    if (!DecompressLzw(body.last(header.compressedLength), minimumBytes, shared->block)) {
        return ResultCode::FileInvalid;
    }
    EntryList entries;
    if (const ResultCode code = ReadEntries(shared, header.entryCount, entries);
        code != ResultCode::Ok) {
        return code;
    }
    catalogue = {body.first(header.crlLength), std::move(entries)};
    return ResultCode::Ok;
}

}  // namespace

ResultCode ReadCatalogueFile(const std::string& path, std::vector<std::uint8_t>& fileBytes) {
    const auto start = ReadFileStart(path, catalogue_header::kSizeBytes);
    if (!start) {
        return ResultCode::CatalogueIOError;
    }
    if (!ReadHeader(start->bytes, start->fileSizeBytes)) {
        return ResultCode::FileInvalid;
    }
    auto whole = ReadFileStart(path, start->fileSizeBytes);
    if (!whole) {
        return ResultCode::CatalogueIOError;
    }
    fileBytes = std::move(whole->bytes);
    return ResultCode::Ok;
}

ResultCode ParseCatalogueImage(std::span<std::uint8_t> fileBytes,
                               const SignatureCheck& checkSignature, ParsedCatalogue& catalogue) {
    catalogue = {};
    const auto header = ReadHeader(fileBytes, fileBytes.size());
    if (!header) {
        return ResultCode::FileInvalid;
    }
    if (const ResultCode code = checkSignature(fileBytes); code != ResultCode::Ok) {
        return code;
    }
    return ReadBody(fileBytes, *header, catalogue);
}

}  // namespace sealkeeper
