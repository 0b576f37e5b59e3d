#include "inspect/show/catalogue_fields.h"

#include <array>
#include <cstddef>

#include "catalogue/catalogue_format.h"
#include "inspect/report/hex_text.h"
#include "platform/little_endian.h"

namespace sealkeeper {
namespace {

struct Place {
    const char* name;
    std::size_t offset;
    std::size_t sizeBytes;
};

constexpr std::array<Place, 9> kPlaces = {{
    {"magic", catalogue_header::kMagicOffset, signed_file::kMagic.size()},
    {"format version", catalogue_header::kFormatVersionOffset, sizeof(std::uint16_t)},
    {"signature layout", catalogue_header::kSignatureLayoutOffset, sizeof(std::uint16_t)},
    {"signature area", catalogue_header::kSignatureOffset, signed_file::kSignatureAreaBytes},
    {"signature_length", catalogue_header::kSignatureLengthOffset, sizeof(std::uint32_t)},
    {"crl_length", catalogue_header::kCrlLengthOffset, sizeof(std::uint32_t)},
    {"compressed_length", catalogue_header::kCompressedLengthOffset, sizeof(std::uint32_t)},
    {"raw_length", catalogue_header::kRawLengthOffset, sizeof(std::uint32_t)},
    {"entry_count", catalogue_header::kEntryCountOffset, sizeof(std::uint32_t)},
}};

bool IsNumber(const Place& place) {
    return place.offset != catalogue_header::kMagicOffset &&
           place.offset != catalogue_header::kSignatureOffset;
}

std::string MeaningOf(const Place& place, std::uint64_t number) {
    if (place.offset == catalogue_header::kSignatureLayoutOffset) {
        return number == catalogue_header::kSignatureLayout
                   ? "the signature covers the whole file"
                   : "an older one: the signature covers what follows it";
    }
    return {};
}

ShownField FieldOf(const Place& place, std::span<const std::uint8_t> bytes) {
    ShownField field{place.name, place.offset, place.sizeBytes, {}, {}};
    if (!IsNumber(place)) {
        field.value = place.offset == catalogue_header::kMagicOffset ? SeparatedHexText(bytes)
                                                                     : HexText(bytes);
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
