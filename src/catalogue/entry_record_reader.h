// Reads the records of a catalogue's entry block one after the other while it is decompressed.
// Nothing in it is trusted: every count is held against the bytes that are left.
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

// The part of a record that every record has.
class RecordStart {
  public:
    [[nodiscard]] std::uint64_t FileSizeBytes() const {
        return Load<std::uint64_t>(entry_record::kFileSizeOffset);
    }
    [[nodiscard]] std::uint32_t NamePosition() const {
        return Load<std::uint32_t>(entry_record::kNamePositionOffset);
    }
    // All of the field, in the bytes of this object.
    [[nodiscard]] std::span<const std::uint8_t, entry_record::kPathBytes> PathField() const {
        return std::span(bytes_).subspan<entry_record::kPathOffset, entry_record::kPathBytes>();
    }
    [[nodiscard]] std::uint32_t DigestCount() const {
        return Load<std::uint32_t>(entry_record::kDigestCountOffset);
    }
    [[nodiscard]] std::uint64_t DigestsBytes() const {
        return entry_record::kDigestBytes * std::uint64_t{DigestCount()};
    }

    // What is read into.
    [[nodiscard]] std::span<std::uint8_t> Bytes() { return bytes_; }

  private:
    template <typename Unsigned>
    [[nodiscard]] Unsigned Load(std::size_t offset) const {
        return LoadLittleEndian<Unsigned>(std::span(bytes_).subspan(offset));
    }

    // As they are until they are read.
    std::array<std::uint8_t, entry_record::kFixedBytes> bytes_;
};

class EntryRecordReader {
  public:
    // Begins with the first of `entryCount` records in the block `compressed`, which must outlive
    // the reader. Nothing when the block cannot be decompressed, whether any record is asked for or
    // not, or has no room for so many records. What is wrong, here and in what follows, is then in
    // `*reason`, unless that is null. Asks for no memory.
    [[nodiscard]] static std::optional<EntryRecordReader> Open(
        std::span<const std::uint8_t> compressed, std::uint32_t entryCount,
        InvalidReason* reason = nullptr);

    // Reads the start of the next record. False when it, or its digests, are not all there.
    [[nodiscard]] bool ReadStart(RecordStart& start);

    // Fills `digests` with the next of the digests that the start of the record tells of, which all
    // have to be read before the next start. False when so many bytes are not left in the block.
    [[nodiscard]] bool ReadDigests(std::span<std::uint8_t> digests);

    // How many bytes are left in the block.
    [[nodiscard]] std::uint64_t BytesLeft() const { return block_.BytesLeft(); }

  private:
    EntryRecordReader(LzwDecompressor block, InvalidReason* reason);

    // The offset of the next byte in the block.
    [[nodiscard]] std::uint64_t Position() const { return blockBytes_ - BytesLeft(); }

    LzwDecompressor block_;
    std::uint64_t blockBytes_;
    InvalidReason* reason_;
    // The number of the record whose start is read next.
    std::uint64_t index_ = 0;
};

}  // namespace sealkeeper

#endif
