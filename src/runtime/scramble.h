// The transform that runtime.conf is stored under. It has no key and depends on positions alone, so
// it hides nothing from anyone who knows it. It is part of the format.
#ifndef SEALKEEPER_RUNTIME_SCRAMBLE_H
#define SEALKEEPER_RUNTIME_SCRAMBLE_H

#include <cstdint>
#include <span>

namespace sealkeeper {

// Both change `bytes` in place, and each undoes the other. Fewer than two bytes are left as they
// are.
void Scramble(std::span<std::uint8_t> bytes);
void Unscramble(std::span<std::uint8_t> bytes);

}  // namespace sealkeeper

#endif
