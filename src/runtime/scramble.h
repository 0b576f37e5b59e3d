// The keyless transform by position under which runtime.conf is stored. It hides nothing from
// anyone who knows it; it is part of the format.
#ifndef SEALKEEPER_RUNTIME_SCRAMBLE_H
#define SEALKEEPER_RUNTIME_SCRAMBLE_H

#include <cstdint>
#include <span>

namespace sealkeeper {

// Both change `bytes` in place and undo each other. Less than two bytes are left as they are.
void Scramble(std::span<std::uint8_t> bytes);
void Unscramble(std::span<std::uint8_t> bytes);

}  // namespace sealkeeper

#endif
