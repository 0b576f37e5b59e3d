#include "catalogue/stored_entry.h"

#include "catalogue/catalogue_format.h"
#include "platform/text_encoding.h"

namespace sealkeeper {

StoredEntry::StoredEntry(const StoredFields& fields, CheckExtent extent)
    : fileSizeBytes_(fields.fileSizeBytes),
      path_(fields.path.data()),
      digests_(fields.digests.data()),
      namePosition_(fields.namePosition),
      digestCount_(static_cast<std::uint32_t>(fields.digests.size() / kSha256Bytes)),
      pathUnits_(static_cast<std::uint16_t>(fields.path.size())),
      extent_(extent) {
    static_assert(entry_record::kDigestBytes == kSha256Bytes);
}

std::wstring StoredEntry::Path() const {
    return Utf16ToWide(std::u16string(path_, pathUnits_));
}

std::span<const std::uint8_t, kSha256Bytes> StoredEntry::Digest(std::uint32_t index) const {
    return std::span<const std::uint8_t, kSha256Bytes>(
        digests_ + static_cast<std::size_t>(index) * kSha256Bytes, kSha256Bytes);
}

}  // namespace sealkeeper
