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
    std::u16string path;
    auto field = record_.subspan(entry_record::kPathOffset, entry_record::kPathBytes);
    for (; !field.empty(); field = field.subspan(sizeof(std::uint16_t))) {
        const auto unit = LoadLittleEndian<std::uint16_t>(field);
        if (unit == 0) {
            break;
        }
        path += static_cast<char16_t>(unit);
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
