// Names and offsets of the fields in a catalogue's header.
#ifndef SEALKEEPER_INSPECT_SHOW_CATALOGUE_FIELDS_H
#define SEALKEEPER_INSPECT_SHOW_CATALOGUE_FIELDS_H

#include <cstdint>
#include <span>
#include <vector>

#include "inspect/show/shown_file.h"

namespace sealkeeper {

// The header fields in `start`, the first bytes of a file. Incomplete fields are left out.
[[nodiscard]] std::vector<ShownField> CatalogueFieldsOf(std::span<const std::uint8_t> start);

// The field that the byte at `offset` belongs to; null past the header.
[[nodiscard]] const char* CatalogueFieldAt(std::uint64_t offset);

}  // namespace sealkeeper

#endif
