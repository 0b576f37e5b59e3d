// Describes the revocation-list block of a catalogue.
#ifndef SEALKEEPER_INSPECT_SHOW_REVOCATION_FACTS_H
#define SEALKEEPER_INSPECT_SHOW_REVOCATION_FACTS_H

#include <cstdint>
#include <span>

#include "inspect/show/shown_file.h"

namespace sealkeeper {

[[nodiscard]] RevocationFacts RevocationFactsOf(std::span<const std::uint8_t> block);

}  // namespace sealkeeper

#endif
