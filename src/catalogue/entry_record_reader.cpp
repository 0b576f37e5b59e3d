#include "catalogue/entry_record_reader.h"

#include <algorithm>
#include <utility>

#include "catalogue/lzw/lzw_format.h"

namespace sealkeeper {
namespace {

static_assert(lzw::kMaxUncompressedBytes == kMaxStoredLength);

InvalidReason ReasonOf(const LzwFault& fault) {
    constexpr InvalidPlace kPlace = InvalidPlace::CompressedBlock;
    switch (fault.kind) {
        case LzwFault::Kind::NoCodeWidth:
            break;
        case LzwFault::Kind::UnknownCode:
            return {InvalidField::Code, kPlace,         fault.offset,
                    fault.code,         fault.lastCode, fault.codeIndex};
        case LzwFault::Kind::TooManyBytes:
            return {InvalidField::UncompressedLength, kPlace,         fault.offset, 0,
                    lzw::kMaxUncompressedBytes,       fault.codeIndex};
    }
    return {InvalidField::CodeWidth, kPlace, fault.offset};
}

// Why a block that decompresses to `blockBytes` is too short for `entryCount` records.
InvalidReason ReasonOfNoRoom(std::span<const std::uint8_t> compressed, std::uint32_t entryCount,
                             std::uint64_t blockBytes) {
    if (!lzw::HasMagic(compressed)) {
        std::uint64_t start = 0;
        for (std::size_t i = std::min(compressed.size(), lzw::kMagicBytes); i-- > 0;) {
            start = start << 8U | compressed[i];
        }
        return {InvalidField::BlockMagic, InvalidPlace::CompressedBlock, 0, start,
                lzw::kMagicNumber};
    }
    return {InvalidField::EntryCount, InvalidPlace::File, catalogue_header::kEntryCountOffset,
            entryCount, blockBytes / entry_record::kFixedBytes};
}

}  // namespace

std::optional<EntryRecordReader> EntryRecordReader::Open(std::span<const std::uint8_t> compressed,
                                                         std::uint32_t entryCount,
                                                         InvalidReason* reason) {
    LzwFault fault;
    auto block = LzwDecompressor::Open(compressed, &fault);
    if (!block) {
        TellReason(ReasonOf(fault), reason);
        return std::nullopt;
    }
    if (block->BytesLeft() < std::uint64_t{entryCount} * entry_record::kFixedBytes) {
        TellReason(ReasonOfNoRoom(compressed, entryCount, block->BytesLeft()), reason);
        return std::nullopt;
    }
    return EntryRecordReader(std::move(*block), reason);
}

EntryRecordReader::EntryRecordReader(LzwDecompressor block, InvalidReason* reason)
    : block_(std::move(block)), blockBytes_(block_.BytesLeft()), reason_(reason) {}

bool EntryRecordReader::ReadStart(RecordStart& start) {
    const std::uint64_t position = Position();
    if (!block_.Read(start.Bytes())) {
        TellReason({InvalidField::Record, InvalidPlace::EntryBlock, position, BytesLeft(),
                    entry_record::kFixedBytes, index_},
                   reason_);
        return false;
    }
    if (start.DigestsBytes() > BytesLeft()) {
        TellReason({InvalidField::DigestCount, InvalidPlace::EntryBlock,
                    position + entry_record::kDigestCountOffset, start.DigestCount(),
                    BytesLeft() / entry_record::kDigestBytes, index_},
                   reason_);
        return false;
    }
    ++index_;
    return true;
}

bool EntryRecordReader::ReadDigests(std::span<std::uint8_t> digests) {
    return block_.Read(digests);
}

}  // namespace sealkeeper
