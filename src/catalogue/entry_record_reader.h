// Reads the records of a catalogue's entry block, one after the other, while decompressing it.
// Nothing in it is trusted: every count is checked against the bytes that are left.
#ifndef SEALKEEPER_CATALOGUE_ENTRY_RECORD_READER_H
#define SEALKEEPER_CATALOGUE_ENTRY_RECORD_READER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "catalogue/catalogue_format.h"
#include "catalogue/lzw/lzw_decompressor.h"
#include "platform/little_endian.h"
#include "runtime/invalid_reason.h"

namespace sealkeeper {

// The fixed part of a record.
class RecordStart {
  public:
    [[nodiscard]] std::uint64_t FileSizeBytes() const {
        return Load<std::uint64_t>(entry_record::kFileSizeOffset);
    }
    [[nodiscard]] std::uint32_t NamePosition() const {
        return Load<std::uint32_t>(entry_record::kNamePositionOffset);
    }
    // The whole field; a view into this object.
    [[nodiscard]] std::span<const std::uint8_t, entry_record::kPathBytes> PathField() const {
        return std::span(bytes_).subspan<entry_record::kPathOffset, entry_record::kPathBytes>();
    }
    [[nodiscard]] std::uint32_t DigestCount() const {
        return Load<std::uint32_t>(entry_record::kDigestCountOffset);
    }
    [[nodiscard]] std::uint64_t DigestsBytes() const {
        return entry_record::kDigestBytes * std::uint64_t{DigestCount()};
    }

    // The buffer to read the fixed part into.
    [[nodiscard]] std::span<std::uint8_t> Bytes() { return bytes_; }

  private:
    template <typename Unsigned>
    [[nodiscard]] Unsigned Load(std::size_t offset) const {
        return LoadLittleEndian<Unsigned>(std::span(bytes_).subspan(offset));
    }

    // Uninitialised until they are read.
    std::array<std::uint8_t, entry_record::kFixedBytes> bytes_;
};

class EntryRecordReader {
  public:
    // Opens the block `compressed`, which must outlive the reader, to read `entryCount` records.
    // Nothing when the block cannot be decompressed, even if `entryCount` is 0, or is too short for
    // so many records. The reason of this and every later failure is stored in `*reason`, which
    // must outlive the reader, unless `reason` is null.
    [[nodiscard]] static std::optional<EntryRecordReader> Open(
        std::span<const std::uint8_t> compressed, std::uint32_t entryCount,
        InvalidReason* reason = nullptr);

    // Reads the fixed part of the next record. False when it or its digests are incomplete.
    [[nodiscard]] bool ReadStart(RecordStart& start);

    // Fills `digests` with the next digests of the record. All of them, `DigestCount` of its start,
    // must be read before the next record. False when the block has fewer bytes left.
    [[nodiscard]] bool ReadDigests(std::span<std::uint8_t> digests);

    // How many bytes of the block are left to read.
    [[nodiscard]] std::uint64_t BytesLeft() const { return block_.BytesLeft(); }

  private:
    EntryRecordReader(LzwDecompressor block, InvalidReason* reason);

    // The offset of the next byte in the block.
    [[nodiscard]] std::uint64_t Position() const { return blockBytes_ - BytesLeft(); }

    LzwDecompressor block_;
    std::uint64_t blockBytes_;
    InvalidReason* reason_;
    // The number of the next record, counted from 0.
    std::uint64_t index_ = 0;
};

}  // namespace sealkeeper

#endif
