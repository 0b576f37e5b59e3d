#include "catalogue/stored_entry.h"

#include "catalogue/catalogue_format.h"
#include "platform/little_endian.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

StoredEntry::StoredEntry(std::span<const std::uint8_t> record, CheckExtent extent)
    : record_(record), extent_(extent) {}

std::uint64_t StoredEntry::FileSizeBytes() const {
    return LoadLittleEndian<std::uint64_t>(record_.subspan(entry_record::kFileSizeOffset));
}

std::uint32_t StoredEntry::NamePosition() const {
    return LoadLittleEndian<std::uint32_t>(record_.subspan(entry_record::kNamePositionOffset));
}

std::wstring StoredEntry::Path() const {
    const auto field = record_.subspan(entry_record::kPathOffset, entry_record::kPathBytes);
    const auto unitAt = [field](std::size_t index) {
        return static_cast<char16_t>(
            LoadLittleEndian<std::uint16_t>(field.subspan(index * sizeof(std::uint16_t))));
    };
    std::size_t length = 0;
    while (length < entry_record::kPathUnits && unitAt(length) != 0) {
        ++length;
    }
    std::u16string path(length, u'\0');
    for (std::size_t index = 0; index < length; ++index) {
        path[index] = unitAt(index);
    }
    return Utf16ToWide(path);
}

std::uint32_t StoredEntry::DigestCount() const {
    return LoadLittleEndian<std::uint32_t>(record_.subspan(entry_record::kDigestCountOffset));
}

std::span<const std::uint8_t, kSha256Bytes> StoredEntry::Digest(std::uint32_t index) const {
    const std::size_t offset =
        entry_record::kFixedBytes + static_cast<std::size_t>(index) * kSha256Bytes;
    return record_.subspan(offset).first<kSha256Bytes>();
}

}  // namespace sealkeeper
