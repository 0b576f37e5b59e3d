#include "inspect/show/catalogue_fields.h"

#include <array>
#include <cstddef>

#include "catalogue/catalogue_format.h"
#include "inspect/report/hex_text.h"
#include "inspect/report/number_text.h"
#include "platform/little_endian.h"

namespace sealkeeper {
namespace {

namespace format = catalogue_header;

struct Place {
    const char* name;
    std::size_t offset;
    std::size_t sizeBytes;
};

constexpr std::array<Place, 9> kPlaces = {{
    {"magic", format::kMagicOffset, signed_file::kMagic.size()},
    {"format version", format::kFormatVersionOffset, sizeof(std::uint16_t)},
    {"signature layout", format::kSignatureLayoutOffset, sizeof(std::uint16_t)},
    {"signature area", format::kSignatureOffset, signed_file::kSignatureAreaBytes},
    {"signature_length", format::kSignatureLengthOffset, sizeof(std::uint32_t)},
    {"crl_length", format::kCrlLengthOffset, sizeof(std::uint32_t)},
    {"compressed_length", format::kCompressedLengthOffset, sizeof(std::uint32_t)},
    {"raw_length", format::kRawLengthOffset, sizeof(std::uint32_t)},
    {"entry_count", format::kEntryCountOffset, sizeof(std::uint32_t)},
}};

bool IsNumber(const Place& place) {
    return place.offset != format::kMagicOffset && place.offset != format::kSignatureOffset;
}

std::string MeaningOf(const Place& place, std::uint64_t number) {
    if (place.offset == format::kSignatureLayoutOffset) {
        return number == format::kSignatureLayout
                   ? "the signature covers the whole file"
                   : "an older one: the signature covers what follows it";
    }
    return {};
}

ShownField FieldOf(const Place& place, std::span<const std::uint8_t> bytes) {
    ShownField field{place.name, place.offset, place.sizeBytes, {}, {}};
    if (!IsNumber(place)) {
        field.value =
            place.offset == format::kMagicOffset ? SeparatedHexText(bytes) : HexText(bytes);
        return field;
    }
    const std::uint64_t number = bytes.size() == sizeof(std::uint16_t)
                                     ? LoadLittleEndian<std::uint16_t>(bytes)
                                     : LoadLittleEndian<std::uint32_t>(bytes);
    field.value = number;
    field.meaning = MeaningOf(place, number);
    return field;
}

}  // namespace

std::vector<ShownField> CatalogueFieldsOf(std::span<const std::uint8_t> start) {
    std::vector<ShownField> fields;
    for (const Place& place : kPlaces) {
        if (place.offset + place.sizeBytes <= start.size()) {
            fields.push_back(FieldOf(place, start.subspan(place.offset, place.sizeBytes)));
        }
    }
    return fields;
}

const char* CatalogueFieldAt(std::uint64_t offset) {
    for (const Place& place : kPlaces) {
        if (place.offset <= offset && offset < place.offset + place.sizeBytes) {
            return place.name;
        }
    }
    return nullptr;
}

}  // namespace sealkeeper
